#pragma once

#include <QtWidgets/QDialog>

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

protected:
    void changeEvent(QEvent *event) override;

private:
    /// One column of labels across all sections.
    void alignLabels();
};

} // namespace orlenta::shell
