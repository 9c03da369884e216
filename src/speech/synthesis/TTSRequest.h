#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include "model/ProjectLineSettings.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

/// A pronunciation dictionary that the service holds, in one of its versions.
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

    /// Puts the settings into the record that the model takes.
    void setVoiceSettings(const VoiceSettings &settings);
    /// None without settings. 0 to 1.
    [[nodiscard]] std::optional<double> stability() const;
    void setStability(double stability);
    /// UTF-8 JSON, the keys in the order of the fields.
    [[nodiscard]] QByteArray toJson() const;
};

/// UTF-8 JSON with all four values.
[[nodiscard]] QByteArray toJson(const VoiceSettings &settings);

/// One locator when both ids are known and the dictionary's is not empty, otherwise none.
[[nodiscard]] std::optional<QList<PronunciationDictionaryLocator>>
dictionaryLocators(const std::optional<QString> &dictionaryId, const std::optional<QString> &versionId);

/// The model id of every speech-to-speech request.
[[nodiscard]] QString speechToSpeechModelId();
/// The stability to send: by the delivery word for exactly "v3", otherwise the slider's. 0 to 1.
[[nodiscard]] double stabilityToSend(const model::ProjectLineSettings &settings);
/// What `text` is expected to cost in credits: its user-perceived characters at the model's price, rounded up.
[[nodiscard]] int estimatedCharacters(const QString &text, const QString &modelId);
/// The user-perceived characters of `text`, which a model's limit is counted in.
[[nodiscard]] int perceivedCharacters(const QString &text);

} // namespace orlenta::speech
