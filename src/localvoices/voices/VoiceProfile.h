#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Engine { Flite, Espeak };

/// How a voice is made from what an engine gives: ratios of target to source, 1 for none.
struct VoiceShift {
    double pitch = 1.0;
    double formants = 1.0;

    [[nodiscard]] bool isNone() const { return pitch == 1.0 && formants == 1.0; }
};

/// One voice of this machine: what a catalogue shows of it, and how it is spoken.
struct VoiceProfile {
    QString id;
    QString name;
    QString description;
    QString gender;
    QString age;
    QString accent;
    /// ISO 639-1.
    QString language;
    QString useCase;
    QString descriptive;

    Engine engine = Engine::Espeak;
    /// Flite's voice; empty for an espeak-ng voice.
    QByteArray fliteVoice;
    /// espeak-ng's language and variant. A Flite voice needs them for text that Flite can't read.
    QByteArray espeakLanguage;
    QByteArray espeakVariant;
    VoiceShift shift;

    /// The voice's middle pitch in hertz and the scale of its formants beside an adult male's: the aims of
    /// speech-to-speech.
    double pitchHz = 120.0;
    double formantScale = 1.0;
    /// Tilt of the spectrum above 2.5 kHz in decibels, the voice's colour in speech-to-speech.
    double brightnessDb = 0.0;
};

} // namespace orlenta::localvoices
