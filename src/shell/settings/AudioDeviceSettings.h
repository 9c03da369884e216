#pragma once

#include <QtWidgets/QWidget>

class QComboBox;
class QLabel;

namespace orlenta::audio {
class AudioDeviceMonitor;
class OutputRoutingDiagnostics;
} // namespace orlenta::audio

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::shell {

/// Chooses the input and output devices. If the stored device is unplugged, shows the system default but keeps the
/// choice.
class AudioDeviceSettings final : public QWidget {
    Q_OBJECT
public:
    AudioDeviceSettings(base::UserDefaults &defaults, const audio::AudioDeviceMonitor &devices,
                        const audio::OutputRoutingDiagnostics &routing, QWidget *parent = nullptr);

private:
    void reloadInputs();
    void reloadOutputs();
    void showRouting();

    base::UserDefaults &m_defaults;
    const audio::AudioDeviceMonitor &m_devices;
    const audio::OutputRoutingDiagnostics &m_routing;
    QComboBox *m_input;
    QComboBox *m_output;
    QLabel *m_failure;
    QLabel *m_failureReason;
};

} // namespace orlenta::shell
