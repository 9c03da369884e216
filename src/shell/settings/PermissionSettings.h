#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;

namespace orlenta::audio {
class MicrophonePermission;
}

namespace orlenta::shell {

class AppCommands;

/// Shows whether the application may use the microphone, and requests permission.
class PermissionSettings final : public QWidget {
    Q_OBJECT
public:
    PermissionSettings(audio::MicrophonePermission &permission, AppCommands &commands, QWidget *parent = nullptr);

private:
    void requestMicrophone();
    void showState();
    [[nodiscard]] QString reason() const;

    audio::MicrophonePermission &m_permission;
    AppCommands &m_commands;
    QLabel *m_granted;
    QPushButton *m_grant;
    /// Why the request failed. Only shown once the user has asked.
    QLabel *m_reason;
    bool m_hasAsked = false;
};

} // namespace orlenta::shell
