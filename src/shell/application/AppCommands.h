#pragma once

#include <QtCore/QObject>

namespace orlenta::shell {

/// The commands that belong to no single project. Windows and menus ask; the application carries them out.
class AppCommands final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void newProject();
    void openProject();
    void openSampleProject();
    void openSettings();
    /// The microphone is blocked: the user has to allow it in the desktop's settings.
    void openMicrophoneSettings();
    void openAbout();
    /// Interface scale: one step up, one step down, back to 1.
    void zoomIn();
    void zoomOut();
    void actualSize();
    void quit();
};

} // namespace orlenta::shell
