#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace orlenta::speech {

/// One text-to-speech model of the service, with everything that differs from model to model. Static data: a reference
/// stays valid.
struct SpeechModel {
    /// The model's word in a line's settings.
    QString key;
    /// The model's id at the service.
    QString id;
    /// Other models speak direction tags, so they get the text without them.
    bool understandsTags = false;
    /// Takes the locator of an uploaded pronunciation dictionary.
    bool takesDictionary = false;
    /// Takes the text before the line, for the melody of the whole.
    bool takesPreviousText = false;
    /// Gets V3VoiceSettings, whose stability follows the delivery mode instead of the slider, in place of
    /// VoiceSettings.
    bool usesV3Settings = false;
    /// The most user-perceived characters of one request.
    int characterLimit = 0;
    double creditsPerCharacter = 1.0;

    [[nodiscard]] static const SpeechModel &v3();
    [[nodiscard]] static const SpeechModel &v2();
    [[nodiscard]] static const SpeechModel &flash();
    /// In the order in which they are offered.
    [[nodiscard]] static const QList<SpeechModel> &all();
    /// Null for a word or an id that isn't in the table.
    [[nodiscard]] static const SpeechModel *findByKey(const QString &key);
    [[nodiscard]] static const SpeechModel *findById(const QString &id);
    /// The model that speaks a line with this word in its settings: v3 for an unknown one.
    [[nodiscard]] static const SpeechModel &forKey(const QString &key);
};

} // namespace orlenta::speech
