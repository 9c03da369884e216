#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include "model/ProjectLineSettings.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

/// One version of a pronunciation dictionary at the service.
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
    /// Sent only without v3VoiceSettings: both share one key.
    std::optional<VoiceSettings> voiceSettings;

    /// Stores the settings in the record that the model uses.
    void setVoiceSettings(const VoiceSettings &settings);
    /// None without settings. 0 to 1.
    [[nodiscard]] std::optional<double> stability() const;
    void setStability(double stability);
    /// UTF-8 JSON with the keys in field order.
    [[nodiscard]] QByteArray toJson() const;
};

/// UTF-8 JSON with all four values.
[[nodiscard]] QByteArray toJson(const VoiceSettings &settings);

/// One locator if both ids are known and the dictionary's isn't empty, otherwise none.
[[nodiscard]] std::optional<QList<PronunciationDictionaryLocator>>
dictionaryLocators(const std::optional<QString> &dictionaryId, const std::optional<QString> &versionId);

/// The model id of every speech-to-speech request.
[[nodiscard]] QString speechToSpeechModelId();
/// The stability to send, 0 to 1: from the delivery mode if the model's key is exactly "v3", otherwise the slider's.
[[nodiscard]] double stabilityToSend(const model::ProjectLineSettings &settings);
/// The expected cost of `text` in credits: its user-perceived characters at the model's price, rounded up.
[[nodiscard]] int estimatedCharacters(const QString &text, const QString &modelId);
/// The number of user-perceived characters in `text`.
[[nodiscard]] int perceivedCharacters(const QString &text);

} // namespace orlenta::speech
