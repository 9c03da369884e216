#include "localvoices/protocol/SpeechSettings.h"

#include <algorithm>

#include "localvoices/protocol/JsonReader.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

double SpeechSettings::melody() const {
    return std::max(1.0 + (0.5 - stability) + 0.5 * style, 0.5);
}

void SpeechSettings::readVoiceSettings(const QJsonObject &voiceSettings, QJsonArray &faults) {
    JsonReader reader(voiceSettings, {u"body"_s, u"voice_settings"_s}, faults);
    stability = reader.number(u"stability"_s, 0, 1).value_or(stability);
    style = reader.number(u"style"_s, 0, 1).value_or(style);
    speed = reader.number(u"speed"_s, 0.25, 4).value_or(speed);
    // Has no effect on local voices, but must still be valid.
    static_cast<void>(reader.number(u"similarity_boost"_s, 0, 1));
    reader.requireBool(u"use_speaker_boost"_s);
}

} // namespace orlenta::localvoices
