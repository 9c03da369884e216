#include "speech/account/VoiceSelection.h"

namespace orlenta::speech {

VoiceSelection::VoiceSelection()
    : m_selectedVoiceName(QStringLiteral("Voice 1")), m_selectedVoiceColor(servicePalette().at(1)) {}

void VoiceSelection::selectVoice(const QString &id, const QString &name, const ServiceColor &color) {
    if (m_selectedVoiceId == id && m_selectedVoiceName == name && m_selectedVoiceColor == color)
        return;
    m_selectedVoiceId = id;
    m_selectedVoiceName = name;
    m_selectedVoiceColor = color;
    Q_EMIT selectedVoiceChanged();
}

void VoiceSelection::setVoiceSettings(const VoiceSettings &settings) {
    if (m_voiceSettings == settings)
        return;
    m_voiceSettings = settings;
    Q_EMIT voiceSettingsChanged();
}

} // namespace orlenta::speech
