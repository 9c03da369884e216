#include "model/ProjectJson.h"

#include <algorithm>
#include <memory>

#include "model/IdRepair.h"
#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"
#include "model/TabRepair.h"

namespace orlenta::model {
namespace {

QList<LineId> sequenceOf(std::vector<std::shared_ptr<json::LineDraft>> lines) {
    std::stable_sort(lines.begin(), lines.end(), [](const auto &a, const auto &b) { return a->order < b->order; });
    QList<LineId> sequence;
    sequence.reserve(static_cast<qsizetype>(lines.size()));
    for (const auto &line : lines)
        sequence.append(line->lineId);
    return sequence;
}

Project repaired(json::ProjectDraft draft) {
    Project &project = draft.project;
    // An older version is read like this one, and written as this one.
    project.schemaVersion = Project::currentSchemaVersion;
    for (const auto &line : draft.lines) {
        repairIds(*line);
        while (project.lines.contains(line->lineId))
            line->lineId = LineId::create();
        project.lines.insert(line);
    }
    repairIds(project);
    repairTabs(project, sequenceOf(std::move(draft.lines)));
    if (!project.activeTabId)
        project.activeTabId = project.tabs.first().id;
    return std::move(project);
}

qsizetype likelySize(const std::vector<const ProjectLine *> &lines) {
    constexpr qsizetype perLine = 900;
    constexpr qsizetype perTake = 560;
    qsizetype size = 64 * 1024;
    for (const ProjectLine *line : lines)
        size += perLine + line->text.size() + line->takes.size() * perTake;
    return size;
}

} // namespace

QByteArray encodeProject(const Project &project) {
    const std::vector<const ProjectLine *> lines = project.linesInOrder();
    json::JsonWriter writer(likelySize(lines));
    json::write(writer, project, lines);
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
