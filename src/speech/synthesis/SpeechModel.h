#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace orlenta::speech {

/// A text-to-speech model of the service, with everything that differs between models. The table is static, so
/// references stay valid.
struct SpeechModel {
    /// The model's key in a line's settings.
    QString key;
    /// The model's id at the service.
    QString id;
    /// Other models would read direction tags aloud, so their text is sent without tags.
    bool understandsTags = false;
    /// Accepts the locator of an uploaded pronunciation dictionary.
    bool takesDictionary = false;
    /// Accepts the preceding text, which improves the intonation.
    bool takesPreviousText = false;
    /// Uses V3VoiceSettings instead of VoiceSettings, with a stability from the delivery mode instead of the slider.
    bool usesV3Settings = false;
    /// The most user-perceived characters per request.
    int characterLimit = 0;
    double creditsPerCharacter = 1.0;

    [[nodiscard]] static const SpeechModel &v3();
    [[nodiscard]] static const SpeechModel &v2();
    [[nodiscard]] static const SpeechModel &flash();
    /// In display order.
    [[nodiscard]] static const QList<SpeechModel> &all();
    /// Null for an unknown key or id.
    [[nodiscard]] static const SpeechModel *findByKey(const QString &key);
    [[nodiscard]] static const SpeechModel *findById(const QString &id);
    /// The model for a line with this key in its settings; v3 for an unknown key.
    [[nodiscard]] static const SpeechModel &forKey(const QString &key);
};

} // namespace orlenta::speech
