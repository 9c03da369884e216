#include "localvoices/protocol/SpeechRequest.h"

#include <limits>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "localvoices/protocol/JsonReader.h"
#include "localvoices/protocol/ServiceError.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

const QJsonArray &bodyLocation() {
    static const QJsonArray location{u"body"_s};
    return location;
}

QJsonArray inBody(const QString &key) {
    return {u"body"_s, key};
}

void readVoiceSettings(const QJsonObject &object, SpeechSettings &settings, QJsonArray &faults) {
    JsonReader reader(object, inBody(u"voice_settings"_s), faults);
    settings.stability = reader.number(u"stability"_s, 0, 1).value_or(settings.stability);
    settings.style = reader.number(u"style"_s, 0, 1).value_or(settings.style);
    settings.speed = reader.number(u"speed"_s, 0.25, 4).value_or(settings.speed);
    // Nothing here can sound more like a voice than it does, but the value still has to be one.
    static_cast<void>(reader.number(u"similarity_boost"_s, 0, 1));
    reader.requireBool(u"use_speaker_boost"_s);
}

void readSeed(JsonReader &reader, SpeechSettings &settings) {
    const qint64 seed = reader.integer(u"seed"_s, 0, std::numeric_limits<std::uint32_t>::max()).value_or(0);
    settings.seed = static_cast<std::uint32_t>(seed);
}

void readLocators(JsonReader &reader, TextToSpeechRequest &request, QJsonArray &faults) {
    const QString key = u"pronunciation_dictionary_locators"_s;
    const QJsonArray locators = reader.array(key, 3).value_or(QJsonArray());
    for (int index = 0; index < locators.size(); ++index) {
        QJsonArray location = inBody(key);
        location.append(index);
        JsonReader item(locators.at(index).toObject(), location, faults);
        const std::optional<QString> id = item.text(u"pronunciation_dictionary_id"_s, Presence::Required);
        const std::optional<QString> version = item.text(u"version_id"_s);
        if (id)
            request.locators.push_back({*id, version});
    }
}

std::optional<QJsonObject> parseObject(const QByteArray &json) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    return error.error == QJsonParseError::NoError && document.isObject() ? std::optional(document.object())
                                                                          : std::nullopt;
}

} // namespace

std::variant<TextToSpeechRequest, QJsonArray> readTextToSpeech(const QByteArray &body) {
    const std::optional<QJsonObject> object = parseObject(body);
    if (!object)
        return QJsonArray{validationFault({u"body"_s, 0}, u"JSON decode error"_s, u"json_invalid"_s)};
    QJsonArray faults;
    JsonReader reader(*object, bodyLocation(), faults);
    TextToSpeechRequest request;
    request.text = reader.text(u"text"_s, Presence::Required).value_or(QString());
    request.modelId = reader.text(u"model_id"_s).value_or(u"eleven_multilingual_v2"_s);
    request.languageCode = reader.text(u"language_code"_s).value_or(QString());
    readVoiceSettings(reader.object(u"voice_settings"_s).value_or(QJsonObject()), request.settings, faults);
    readSeed(reader, request.settings);
    readLocators(reader, request, faults);
    const bool hasPrevious = reader.text(u"previous_text"_s).has_value();
    const bool hasNext = reader.text(u"next_text"_s).has_value();
    const bool hasPreviousIds = reader.array(u"previous_request_ids"_s, 3).has_value();
    const bool hasNextIds = reader.array(u"next_request_ids"_s, 3).has_value();
    request.hasContext = hasPrevious || hasNext || hasPreviousIds || hasNextIds;
    reader.requireOneOf(u"apply_text_normalization"_s, {u"auto"_s, u"on"_s, u"off"_s});
    reader.requireBool(u"apply_language_text_normalization"_s);
    if (!faults.isEmpty())
        return faults;
    return request;
}

std::variant<SpeechToSpeechRequest, QJsonArray> readSpeechToSpeech(const HttpRequest &request) {
    const std::optional<MultipartForm> form = MultipartForm::parse(request.header("content-type"), request.body);
    const FormPart *audio = form ? form->findPart(u"audio"_s) : nullptr;
    if (audio == nullptr)
        return QJsonArray{validationFault(inBody(u"audio"_s), u"Field required"_s, u"missing"_s)};
    QJsonArray faults;
    SpeechToSpeechRequest speech;
    speech.audio = audio->content;
    speech.modelId = form->text(u"model_id"_s).value_or(u"eleven_english_sts_v2"_s);
    if (const std::optional<QString> settings = form->text(u"voice_settings"_s)) {
        const std::optional<QJsonObject> object = parseObject(settings->toUtf8());
        if (object)
            readVoiceSettings(*object, speech.settings, faults);
        else
            faults.append(validationFault(inBody(u"voice_settings"_s), u"Invalid JSON"_s, u"json_invalid"_s));
    }
    const QString fileFormat = form->text(u"file_format"_s).value_or(u"other"_s);
    speech.isPcm16 = fileFormat == u"pcm_s16le_16"_s;
    if (!speech.isPcm16 && fileFormat != u"other"_s)
        faults.append(validationFault(inBody(u"file_format"_s), u"Input should be one of 'pcm_s16le_16', 'other'"_s,
                                      u"literal_error"_s));
    if (!faults.isEmpty())
        return faults;
    return speech;
}

} // namespace orlenta::localvoices
