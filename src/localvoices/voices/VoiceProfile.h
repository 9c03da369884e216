#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Engine { Flite, Espeak };

/// How to shift an engine's output to make a voice: ratios of target to source, 1 for no change.
struct VoiceShift {
    double pitch = 1.0;
    double formants = 1.0;

    [[nodiscard]] bool isNone() const { return pitch == 1.0 && formants == 1.0; }
};

/// A local voice: its catalogue entry, and how to speak it.
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
    /// espeak-ng's language and variant. Flite voices use them for text that Flite can't read.
    QByteArray espeakLanguage;
    QByteArray espeakVariant;
    VoiceShift shift;

    /// Targets of speech-to-speech: median pitch in hertz, and formants relative to an adult male's.
    double pitchHz = 120.0;
    double formantScale = 1.0;
    /// Gain above 2.5 kHz in decibels that speech-to-speech applies.
    double brightnessDb = 0.0;
};

} // namespace orlenta::localvoices
