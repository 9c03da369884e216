#include "model/ProjectJson.h"

#include <algorithm>
#include <memory>

#include <QtCore/QSet>

#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"

namespace orlenta::model {
namespace {

// A repeated id makes it impossible to tell two records apart; the first keeps it.
template <typename Id>
class IdRenewal final {
public:
    explicit IdRenewal(qsizetype records) { m_seen.reserve(records); }
    void renewIfRepeated(Id &id) {
        while (m_seen.contains(id))
            id = Id::create();
        m_seen.insert(id);
    }

private:
    QSet<Id> m_seen;
};

using SharedLines = std::vector<std::shared_ptr<ProjectLine>>;

ProjectTab tabOfAllLines(const SharedLines &lines) {
    SharedLines sequence = lines;
    std::stable_sort(sequence.begin(), sequence.end(),
                     [](const auto &a, const auto &b) { return a->order < b->order; });
    ProjectTab tab{TabId::create(), QStringLiteral("Script 1"), {}};
    tab.lineIds.reserve(static_cast<qsizetype>(sequence.size()));
    for (const auto &line : sequence)
        tab.lineIds.append(line->lineId);
    return tab;
}

Project repaired(json::ProjectDraft draft) {
    Project &project = draft.project;
    IdRenewal<LineId> lineIds(static_cast<qsizetype>(draft.lines.size()));
    for (const auto &line : draft.lines)
        lineIds.renewIfRepeated(line->lineId);
    IdRenewal<TabId> tabIds(project.tabs.size());
    for (ProjectTab &tab : project.tabs)
        tabIds.renewIfRepeated(tab.id);
    if (project.tabs.isEmpty())
        project.tabs.append(tabOfAllLines(draft.lines));
    if (!project.activeTabId)
        project.activeTabId = project.tabs.first().id;
    project.lines = LineList(LineList::Pointers(draft.lines.begin(), draft.lines.end()));
    return std::move(project);
}

qsizetype likelySize(const Project &project) {
    constexpr qsizetype perLine = 900;
    constexpr qsizetype perTake = 560;
    qsizetype size = 64 * 1024;
    for (qsizetype i = 0; i < project.lines.size(); ++i)
        size += perLine + project.lines.at(i).text.size() + project.lines.at(i).takes.size() * perTake;
    return size;
}

} // namespace

QByteArray encodeProject(const Project &project) {
    json::JsonWriter writer(likelySize(project));
    json::write(writer, project);
    return writer.take();
}

base::Result<Project, std::variant<NewerSchema, DecodingError>> decodeProject(QByteArray bytes, base::Timestamp now) {
    using Error = std::variant<NewerSchema, DecodingError>;
    json::ProjectDraft draft;
    const json::RecordReader::Outcome outcome =
        json::RecordReader::read(std::move(bytes), json::projectDocument(), &draft, now);
    if (outcome.version && *outcome.version > Project::currentSchemaVersion)
        return base::fail(Error(NewerSchema{*outcome.version}));
    if (outcome.problem)
        return base::fail(Error(DecodingError{*outcome.problem}));
    return repaired(std::move(draft));
}

} // namespace orlenta::model
