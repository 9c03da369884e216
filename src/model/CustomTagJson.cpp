#include "model/CustomTagJson.h"

#include "model/IdRepair.h"
#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"

namespace orlenta::model {

QByteArray encodeCustomTags(const QList<CustomTag> &tags) {
    json::JsonWriter writer(256 * (tags.size() + 1));
    writer.beginArray();
    for (const CustomTag &tag : tags) {
        writer.element();
        json::write(writer, tag);
    }
    writer.endArray();
    return writer.take();
}

std::optional<QList<CustomTag>> decodeCustomTags(const QByteArray &bytes) {
    QList<CustomTag> tags;
    const auto outcome = json::RecordReader::read(bytes, json::customTagsDocument(), &tags, {});
    if (outcome.problem)
        return std::nullopt;
    repairIds(tags);
    return tags;
}

} // namespace orlenta::model
