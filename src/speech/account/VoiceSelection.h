#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include "speech/account/ServiceColor.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

/// The voice selected in the inspector, and the slider values for lines without their own. Main thread.
class VoiceSelection final : public QObject {
    Q_OBJECT
public:
    VoiceSelection();

    /// Empty if no voice is selected.
    [[nodiscard]] QString selectedVoiceId() const { return m_selectedVoiceId; }
    [[nodiscard]] QString selectedVoiceName() const { return m_selectedVoiceName; }
    [[nodiscard]] ServiceColor selectedVoiceColor() const { return m_selectedVoiceColor; }
    void selectVoice(const QString &id, const QString &name, const ServiceColor &color);
    [[nodiscard]] VoiceSettings voiceSettings() const { return m_voiceSettings; }
    void setVoiceSettings(const VoiceSettings &settings);

Q_SIGNALS:
    void selectedVoiceChanged();
    void voiceSettingsChanged();

private:
    QString m_selectedVoiceId;
    QString m_selectedVoiceName;
    ServiceColor m_selectedVoiceColor;
    VoiceSettings m_voiceSettings;
};

} // namespace orlenta::speech
