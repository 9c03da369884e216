#include "model/ScriptJson.h"

#include "model/json/RecordReader.h"
#include "model/json/RecordTables.h"
#include "model/json/RecordWriting.h"

namespace orlenta::model {
namespace {

template <typename Record>
QByteArray encodeScriptRecords(const QList<Record> &records) {
    json::JsonWriter writer(4096);
    writer.beginArray();
    for (const Record &record : records) {
        writer.element();
        json::write(writer, record);
    }
    writer.endArray();
    return writer.take();
}

template <typename Record>
std::optional<QList<Record>> decodeScriptRecords(const QByteArray &bytes, const json::Field &document) {
    QList<Record> records;
    const auto outcome = json::RecordReader::read(bytes, document, &records, {});
    return outcome.problem ? std::nullopt : std::optional(std::move(records));
}

} // namespace

QByteArray encodeScriptTabs(const QList<ScriptTab> &tabs) {
    return encodeScriptRecords(tabs);
}

QByteArray encodeScriptLines(const QList<ScriptLine> &lines) {
    return encodeScriptRecords(lines);
}

std::optional<QList<ScriptTab>> decodeScriptTabs(const QByteArray &bytes) {
    return decodeScriptRecords<ScriptTab>(bytes, json::scriptTabsDocument());
}

std::optional<QList<ScriptLine>> decodeScriptLines(const QByteArray &bytes) {
    return decodeScriptRecords<ScriptLine>(bytes, json::scriptLinesDocument());
}

} // namespace orlenta::model
