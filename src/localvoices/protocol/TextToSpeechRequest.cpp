#include "localvoices/protocol/TextToSpeechRequest.h"

#include <limits>

#include "localvoices/protocol/JsonReader.h"
#include "localvoices/protocol/Refusal.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

std::vector<DictionaryLocator> readLocators(JsonReader &reader, QJsonArray &faults) {
    const QString key = u"pronunciation_dictionary_locators"_s;
    std::vector<DictionaryLocator> locators;
    const QJsonArray items = reader.array(key, 3).value_or(QJsonArray());
    for (int index = 0; index < items.size(); ++index) {
        JsonReader item(items.at(index).toObject(), {u"body"_s, key, index}, faults);
        const std::optional<QString> id = item.text(u"pronunciation_dictionary_id"_s, Presence::Required);
        const std::optional<QString> version = item.text(u"version_id"_s);
        if (id)
            locators.push_back({*id, version});
    }
    return locators;
}

bool readContext(JsonReader &reader) {
    const bool hasPrevious = reader.text(u"previous_text"_s).has_value();
    const bool hasNext = reader.text(u"next_text"_s).has_value();
    const bool hasPreviousIds = reader.array(u"previous_request_ids"_s, 3).has_value();
    const bool hasNextIds = reader.array(u"next_request_ids"_s, 3).has_value();
    return hasPrevious || hasNext || hasPreviousIds || hasNextIds;
}

} // namespace

std::variant<TextToSpeechRequest, HttpAnswer> TextToSpeechRequest::read(const QByteArray &body) {
    const std::optional<QJsonObject> object = JsonReader::parseObject(body);
    if (!object)
        return validationAnswer({validationFault({u"body"_s, 0}, u"JSON decode error"_s, u"json_invalid"_s)});
    QJsonArray faults;
    JsonReader reader(*object, {u"body"_s}, faults);
    TextToSpeechRequest request;
    request.text = reader.text(u"text"_s, Presence::Required).value_or(QString());
    request.modelId = reader.text(u"model_id"_s).value_or(u"eleven_multilingual_v2"_s);
    request.languageCode = reader.text(u"language_code"_s).value_or(QString());
    request.settings.readVoiceSettings(reader.object(u"voice_settings"_s).value_or(QJsonObject()), faults);
    const qint64 seed = reader.integer(u"seed"_s, 0, std::numeric_limits<std::uint32_t>::max()).value_or(0);
    request.settings.seed = static_cast<std::uint32_t>(seed);
    request.locators = readLocators(reader, faults);
    request.hasContext = readContext(reader);
    reader.requireOneOf(u"apply_text_normalization"_s, {u"auto"_s, u"on"_s, u"off"_s});
    reader.requireBool(u"apply_language_text_normalization"_s);
    if (!faults.isEmpty())
        return validationAnswer(faults);
    return request;
}

} // namespace orlenta::localvoices
