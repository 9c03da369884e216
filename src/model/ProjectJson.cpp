#include "model/ProjectJson.h"

#include <algorithm>
#include <numeric>

#include <QtCore/QSet>

#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"

namespace orlenta::model {
namespace {

// A repeated id makes it impossible to tell two records apart; the first keeps it.
template <typename Records, typename Id>
void renewRepeatedIds(Records &records, Id id) {
    QSet<std::decay_t<decltype(records.front().*id)>> seen;
    seen.reserve(static_cast<qsizetype>(records.size()));
    for (auto &record : records) {
        if (seen.contains(record.*id))
            record.*id = std::decay_t<decltype(record.*id)>::create();
        seen.insert(record.*id);
    }
}

ProjectTab tabOfAllLines(const std::vector<ProjectLine> &lines) {
    std::vector<size_t> sequence(lines.size());
    std::iota(sequence.begin(), sequence.end(), size_t{0});
    std::stable_sort(sequence.begin(), sequence.end(),
                     [&](size_t a, size_t b) { return lines[a].order < lines[b].order; });
    ProjectTab tab{TabId::create(), QStringLiteral("Script 1"), {}};
    tab.lineIds.reserve(static_cast<qsizetype>(lines.size()));
    for (const size_t index : sequence)
        tab.lineIds.append(lines[index].lineId);
    return tab;
}

Project repaired(json::ProjectDraft draft) {
    Project &project = draft.project;
    renewRepeatedIds(draft.lines, &ProjectLine::lineId);
    renewRepeatedIds(project.tabs, &ProjectTab::id);
    if (project.tabs.isEmpty())
        project.tabs.append(tabOfAllLines(draft.lines));
    if (!project.activeTabId)
        project.activeTabId = project.tabs.first().id;
    project.lines = LineList(std::move(draft.lines));
    return std::move(project);
}

qsizetype likelySize(const Project &project) {
    constexpr qsizetype perLine = 1000;
    constexpr qsizetype perTake = 800;
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

base::Result<Project, std::variant<NewerSchema, DecodingError>> decodeProject(const QByteArray &bytes,
                                                                              base::Timestamp now) {
    using Error = std::variant<NewerSchema, DecodingError>;
    json::ProjectDraft draft;
    const json::RecordReader::Outcome outcome = json::RecordReader::read(bytes, json::projectDocument(), &draft, now);
    if (outcome.version && *outcome.version > Project::currentSchemaVersion)
        return base::fail(Error(NewerSchema{*outcome.version}));
    if (outcome.problem)
        return base::fail(Error(DecodingError{*outcome.problem}));
    return repaired(std::move(draft));
}

} // namespace orlenta::model
