#include "model/LineTable.h"

#include <gtest/gtest.h>

#include "model/Project.h"
#include "model/TabRepair.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

TEST(LineTable, ACopyKeepsItsLinesWhenTheOriginalChanges) {
    LineTable table;
    QList<LineId> ids;
    for (int i = 0; i < 3; ++i) {
        const ProjectLine line = ProjectLine::makeNew();
        ids.append(line.lineId);
        table.insert(line);
    }
    const LineTable copy = table;
    table.update(ids.at(1), [](ProjectLine &line) { line.text = u"new"_s; });
    table.insert(ProjectLine::makeNew());
    table.remove(ids.at(2));
    EXPECT_EQ(copy.size(), 3);
    EXPECT_EQ(copy.find(ids.at(1))->text, QString());
    EXPECT_TRUE(copy.contains(ids.at(2)));
    EXPECT_EQ(table.size(), 3);
    EXPECT_EQ(table.find(ids.at(1))->text, u"new"_s);
    EXPECT_EQ(table.find(ids.at(2)), nullptr);
    EXPECT_EQ(copy.find(ids.at(0)), table.find(ids.at(0))) << "an unchanged line is shared";
}

TEST(LineTable, EqualityAndDifferencesCompareContent) {
    LineTable table;
    const ProjectLine line = ProjectLine::makeNew();
    table.insert(line);
    LineTable same;
    same.insert(line);
    EXPECT_EQ(table, same);
    same.update(line.lineId, [](ProjectLine &changed) { changed.notes = u"n"_s; });
    EXPECT_FALSE(table == same);
    QStringList found;
    same.forEachDifference(table, [&](const LineId &, const ProjectLine *mine, const ProjectLine *theirs) {
        found.append(mine->notes + u'/' + theirs->notes);
    });
    EXPECT_EQ(found, QStringList{u"n/"_s});
}

TEST(Project, LinesFollowTheTabs) {
    Project project = Project::makeNew(u"P"_s, {});
    project.tabs.append({TabId::create(), u"Two"_s, {}});
    project.appendLine(ProjectLine::makeNew());
    const LineId first = project.tabs.first().lineIds.first();
    const LineId second = project.tabs.last().lineIds.first();
    const ProjectLine homeless = ProjectLine::makeNew();
    project.lines.insert(homeless);
    project.tabs.move(0, 1);
    QList<LineId> ids;
    for (const ProjectLine *line : project.linesInOrder())
        ids.append(line->lineId);
    EXPECT_EQ(ids, (QList<LineId>{second, first}));
    EXPECT_EQ(project.tabOf(second), &project.tabs.first());
    EXPECT_EQ(project.tabOf(homeless.lineId), nullptr);
}

TEST(TabRepair, EachLineIsInExactlyOneTab) {
    Project project;
    QList<LineId> ids;
    for (int i = 0; i < 4; ++i) {
        const ProjectLine line = ProjectLine::makeNew();
        project.lines.insert(line);
        ids.append(line.lineId);
    }
    project.tabs = {{TabId::create(), u"A"_s, {ids.at(1), LineId::create(), ids.at(1)}},
                    {TabId::create(), u"B"_s, {ids.at(2), ids.at(1)}}};
    repairTabs(project, ids);
    EXPECT_EQ(project.tabs.at(0).lineIds, (LineIdList{ids.at(1), ids.at(0), ids.at(3)}));
    EXPECT_EQ(project.tabs.at(1).lineIds, LineIdList{ids.at(2)});
    project.tabs.clear();
    repairTabs(project, ids);
    ASSERT_EQ(project.tabs.size(), 1);
    EXPECT_EQ(project.tabs.first().name, u"Script 1"_s);
    EXPECT_EQ(project.tabs.first().lineIds, LineIdList(ids));
}

} // namespace
} // namespace orlenta::model
