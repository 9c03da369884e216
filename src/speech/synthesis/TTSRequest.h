#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include "model/ProjectLineSettings.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

/// A pronunciation dictionary that lies at the service, in one of its versions.
struct PronunciationDictionaryLocator {
    QString pronunciationDictionaryId;
    QString versionId;

    friend bool operator==(const PronunciationDictionaryLocator &, const PronunciationDictionaryLocator &) = default;
};

/// The body of a text-to-speech request.
struct TTSRequest {
    QString text;
    QString modelId;
    std::optional<QString> previousText;
    std::optional<QList<PronunciationDictionaryLocator>> pronunciationDictionaryLocators;
    std::optional<V3VoiceSettings> v3VoiceSettings;
    /// Sent only when there are no v3VoiceSettings: both go under one key.
    std::optional<VoiceSettings> voiceSettings;

    /// UTF-8 JSON, the keys in the order of the fields.
    [[nodiscard]] QByteArray toJson() const;
};

/// UTF-8 JSON with all four values.
[[nodiscard]] QByteArray toJson(const VoiceSettings &settings);

/// One locator when both ids are known and the dictionary's is not empty, otherwise none.
[[nodiscard]] std::optional<QList<PronunciationDictionaryLocator>>
dictionaryLocators(const std::optional<QString> &dictionaryId, const std::optional<QString> &versionId);

/// The service's model id for a line's model word: "Flash", "v2", and everything else is eleven_v3.
[[nodiscard]] QString serviceModelId(const QString &model);
/// The model id of every speech-to-speech request.
[[nodiscard]] QString speechToSpeechModelId();
/// The stability to send: by the delivery word for exactly "v3", otherwise the slider's. 0 to 1.
[[nodiscard]] double stabilityToSend(const model::ProjectLineSettings &settings);
/// What `text` is expected to cost: its user-perceived characters, half of them rounded up for eleven_flash_v2_5.
[[nodiscard]] int estimatedCharacters(const QString &text, const QString &modelId);

} // namespace orlenta::speech
