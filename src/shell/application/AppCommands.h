#pragma once

#include <QtCore/QObject>

namespace orlenta::shell {

/// Application-wide commands. Windows and menus emit them; OrlentaApp carries them out.
class AppCommands final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void newProject();
    void openProject();
    void openSampleProject();
    void openSettings();
    /// The microphone is blocked; the user must allow it in the desktop's settings.
    void openMicrophoneSettings();
    void openAbout();
    /// Changes the interface scale: a step up, a step down, back to 1.
    void zoomIn();
    void zoomOut();
    void actualSize();
    void quit();
};

} // namespace orlenta::shell
