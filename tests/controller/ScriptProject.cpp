#include "controller/ScriptProject.h"

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>

#include "base/files/PrivateFolders.h"
#include "controller/script/Selection.h"
#include "controller/takes/TakeEditing.h"
#include "model/ProjectStore.h"
#include "support/TestTone.h"

namespace orlenta::test {
namespace {

constexpr base::Timestamp someTime{std::chrono::seconds(1'700'000'000)};

base::Clock fixedClock() {
    return [] { return someTime; };
}

model::Project onDisk(model::Project project, const QString &folder) {
    auto stored = model::ProjectStore::create(folder, QStringLiteral("Scene"), std::move(project), someTime);
    EXPECT_TRUE(stored) << stored.error().description().toStdString();
    return stored.value().project;
}

} // namespace

model::Project scriptProject(const QList<QStringList> &tabs) {
    model::Project project = model::Project::makeNew(QStringLiteral("Scene"), someTime);
    project.lines = {};
    project.tabs.clear();
    for (const QStringList &texts : tabs) {
        const QString name = QStringLiteral("Script %1").arg(project.tabs.size() + 1);
        project.tabs.append({model::TabId::create(), name, {}});
        for (const QString &text : texts) {
            model::ProjectLine line = model::ProjectLine::makeNew();
            line.text = text;
            project.appendLine(line);
        }
    }
    project.activeTabId = project.tabs.first().id;
    return project;
}

ScriptProject::ScriptProject(const QList<QStringList> &tabs, Folder folder)
    : ScriptProject(scriptProject(tabs), folder) {}

ScriptProject::ScriptProject(model::Project project, Folder folder) {
    const QString path = m_directory.filePath(QStringLiteral("Scene.orl"));
    if (folder == Folder::OnDisk)
        project = onDisk(std::move(project), path);
    m_controller = std::make_unique<controller::ProjectController>(
        std::move(project), folder == Folder::OnDisk ? QUrl::fromLocalFile(path) : QUrl(), fixedClock());
}

model::LineId ScriptProject::id(qsizetype index) const {
    return m_controller->scriptLineIds().at(index);
}

const model::ProjectLine &ScriptProject::line(qsizetype index) const {
    return *m_controller->project().lines.find(id(index));
}

QStringList ScriptProject::texts() const {
    QStringList texts;
    for (qsizetype i = 0; i < m_controller->scriptLineIds().size(); ++i)
        texts.append(line(i).text);
    return texts;
}

QStringList ScriptProject::tabNames() const {
    QStringList names;
    for (const model::ProjectTab &tab : m_controller->project().tabs)
        names.append(tab.name);
    return names;
}

void ScriptProject::clearSelection() {
    const QSet<model::LineId> selected = m_controller->selection().selectedLineIds();
    for (const model::LineId &id : selected)
        m_controller->selection().toggle(id);
}

QString ScriptProject::folder() const {
    return m_controller->projectURL().toLocalFile();
}

void ScriptProject::reopen() {
    const QUrl url = m_controller->projectURL();
    auto stored = model::ProjectStore::load(url.toLocalFile(), someTime);
    ASSERT_TRUE(stored) << stored.error().failureReason().value_or(QString()).toStdString();
    m_controller = std::make_unique<controller::ProjectController>(stored.value().project, url, fixedClock());
}

model::TakeId ScriptProject::addTake(qsizetype index) {
    const QString path = base::PrivateFolders::caches() + QStringLiteral("/tts_take.wav");
    testing::writeTone(path, 0.05);
    const model::LineId lineId = id(index);
    QCoro::waitFor(m_controller->takes().installGeneratedAudio(path, lineId,
                                                               m_controller->takes().generationContext(line(index))));
    return m_controller->project().lines.find(lineId)->takes.last().id;
}

void expectSound(const controller::ProjectController &controller) {
    const model::Project &project = controller.project();
    ASSERT_FALSE(project.lines.isEmpty());
    ASSERT_FALSE(project.presets.isEmpty());
    ASSERT_FALSE(project.tabs.isEmpty());
    ASSERT_TRUE(project.activeTabId && project.findTab(*project.activeTabId) != nullptr);
    QSet<model::LineId> named;
    qsizetype count = 0;
    for (const model::ProjectTab &tab : project.tabs) {
        named.unite(QSet<model::LineId>(tab.lineIds.begin(), tab.lineIds.end()));
        count += tab.lineIds.size();
    }
    ASSERT_EQ(named.size(), project.lines.size());
    ASSERT_EQ(count, project.lines.size());
    project.lines.forEach([&](const model::ProjectLine &line) {
        EXPECT_TRUE(named.contains(line.lineId));
        EXPECT_TRUE(!line.activeTakeId || line.activeTake()->id == *line.activeTakeId);
    });
    const model::LineIdList &script = controller.scriptLineIds();
    ASSERT_EQ(script, controller.activeTab()->lineIds);
    const controller::Selection &selection = controller.selection();
    for (const model::LineId &id : selection.selectedLineIds())
        ASSERT_TRUE(script.contains(id));
    for (const auto &end : {selection.selectionAnchorId(), selection.selectionFocusId(), selection.editingLineId()})
        ASSERT_TRUE(!end || script.contains(*end));
    const QList<model::LineId> &stored = project.selection.selectedLineIds;
    ASSERT_EQ(QSet<model::LineId>(stored.begin(), stored.end()), selection.selectedLineIds());
    ASSERT_EQ(project.selection.activeLineId, selection.singleSelectedLineId());
}

} // namespace orlenta::test
