#include "model/LinePayload.h"

#include "model/IdRepair.h"
#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"

namespace orlenta::model {

QByteArray encodeLinePayload(const LinePayload &payload) {
    json::JsonWriter writer(4096);
    writer.beginObject();
    writer.key("lines");
    writer.beginArray();
    std::int64_t order = 0;
    for (const ProjectLine &line : payload.lines) {
        writer.element();
        json::write(writer, line, order++);
    }
    writer.endArray();
    writer.key("projectId");
    writer.id(payload.projectId.uuid());
    writer.key("version");
    writer.integer(LinePayload::currentVersion);
    writer.endObject();
    return writer.take();
}

std::optional<LinePayload> decodeLinePayload(const QByteArray &bytes) {
    json::LinePayloadDraft draft;
    const auto outcome = json::RecordReader::read(bytes, json::linePayloadDocument(), &draft, {});
    if (outcome.problem || draft.version != LinePayload::currentVersion)
        return std::nullopt;
    for (json::LineDraft &line : draft.lines)
        repairIds(line);
    return LinePayload{draft.projectId, QList<ProjectLine>(draft.lines.begin(), draft.lines.end())};
}

} // namespace orlenta::model
