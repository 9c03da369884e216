#include "speech/synthesis/TTSRequest.h"

#include <cmath>

#include <QtCore/QTextBoundaryFinder>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "speech/synthesis/SpeechModel.h"

namespace orlenta::speech {

namespace {

// Qt's writer sorts the keys; the service gets them in field order.
using RecordWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void writeText(RecordWriter &writer, const char *key, const QString &value) {
    const QByteArray utf8 = value.toUtf8();
    writer.Key(key);
    writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

void writeNumber(RecordWriter &writer, const char *key, double value) {
    writer.Key(key);
    writer.Double(value);
}

void writeSettings(RecordWriter &writer, const V3VoiceSettings &settings) {
    writer.StartObject();
    writeNumber(writer, "stability", settings.stability);
    writeNumber(writer, "similarity_boost", settings.similarityBoost);
    writeNumber(writer, "style", settings.style);
    writer.EndObject();
}

void writeSettings(RecordWriter &writer, const VoiceSettings &settings) {
    writer.StartObject();
    writeNumber(writer, "stability", settings.stability);
    writeNumber(writer, "similarity_boost", settings.similarityBoost);
    writeNumber(writer, "style", settings.style);
    writeNumber(writer, "speed", settings.speed);
    writer.EndObject();
}

QByteArray bytesOf(const rapidjson::StringBuffer &buffer) {
    return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

} // namespace

void TTSRequest::setVoiceSettings(const VoiceSettings &settings) {
    const SpeechModel *model = SpeechModel::findById(modelId);
    if (model != nullptr && model->usesV3Settings)
        v3VoiceSettings = V3VoiceSettings{settings.stability, settings.similarityBoost, settings.style};
    else
        voiceSettings = settings;
}

std::optional<double> TTSRequest::stability() const {
    if (v3VoiceSettings)
        return v3VoiceSettings->stability;
    return voiceSettings ? std::optional(voiceSettings->stability) : std::nullopt;
}

void TTSRequest::setStability(double stability) {
    if (v3VoiceSettings)
        v3VoiceSettings->stability = stability;
    else if (voiceSettings)
        voiceSettings->stability = stability;
}

QByteArray TTSRequest::toJson() const {
    rapidjson::StringBuffer buffer;
    RecordWriter writer(buffer);
    writer.StartObject();
    writeText(writer, "text", text);
    writeText(writer, "model_id", modelId);
    if (previousText)
        writeText(writer, "previous_text", *previousText);
    if (pronunciationDictionaryLocators) {
        writer.Key("pronunciation_dictionary_locators");
        writer.StartArray();
        for (const PronunciationDictionaryLocator &locator : *pronunciationDictionaryLocators) {
            writer.StartObject();
            writeText(writer, "pronunciation_dictionary_id", locator.pronunciationDictionaryId);
            writeText(writer, "version_id", locator.versionId);
            writer.EndObject();
        }
        writer.EndArray();
    }
    if (v3VoiceSettings) {
        writer.Key("voice_settings");
        writeSettings(writer, *v3VoiceSettings);
    } else if (voiceSettings) {
        writer.Key("voice_settings");
        writeSettings(writer, *voiceSettings);
    }
    writer.EndObject();
    return bytesOf(buffer);
}

QByteArray toJson(const VoiceSettings &settings) {
    rapidjson::StringBuffer buffer;
    RecordWriter writer(buffer);
    writeSettings(writer, settings);
    return bytesOf(buffer);
}

std::optional<QList<PronunciationDictionaryLocator>> dictionaryLocators(const std::optional<QString> &dictionaryId,
                                                                        const std::optional<QString> &versionId) {
    if (!dictionaryId || !versionId || dictionaryId->isEmpty())
        return std::nullopt;
    return QList<PronunciationDictionaryLocator>{{*dictionaryId, *versionId}};
}

QString speechToSpeechModelId() {
    return QStringLiteral("eleven_english_sts_v2");
}

double stabilityToSend(const model::ProjectLineSettings &settings) {
    // An unknown key is spoken by v3 as well, but with the slider's stability.
    const SpeechModel *model = SpeechModel::findByKey(settings.model);
    if (model == nullptr || !model->usesV3Settings)
        return settings.stability;
    if (settings.mode == QLatin1String("Creative"))
        return 0.3;
    if (settings.mode == QLatin1String("Robust"))
        return 0.8;
    return 0.5;
}

int estimatedCharacters(const QString &text, const QString &modelId) {
    const SpeechModel *model = SpeechModel::findById(modelId);
    const double price = model != nullptr ? model->creditsPerCharacter : 1.0;
    return static_cast<int>(std::ceil(perceivedCharacters(text) * price));
}

int perceivedCharacters(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    return count;
}

} // namespace orlenta::speech
