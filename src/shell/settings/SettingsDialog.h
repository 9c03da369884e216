#pragma once

#include <QtWidgets/QDialog>

class QVBoxLayout;

namespace orlenta::audio {
class AudioDeviceMonitor;
class OutputRoutingDiagnostics;
} // namespace orlenta::audio

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::shell {

/// The application's preferences. Each takes effect, and is stored, as soon as it is chosen.
class SettingsDialog final : public QDialog {
    Q_OBJECT
public:
    SettingsDialog(base::UserDefaults &defaults, const audio::AudioDeviceMonitor &devices,
                   const audio::OutputRoutingDiagnostics &routing, QWidget *parent = nullptr);
};

} // namespace orlenta::shell
