#pragma once

#include <QtCore/QObject>

class QAction;

namespace orlenta::shell {

class AppCommands;

/// The menu commands that need no project: each window has a set of its own, all of which ask the application.
class AppActions final : public QObject {
    Q_OBJECT
public:
    explicit AppActions(AppCommands &commands, QObject *parent = nullptr);

    QAction *newProject;
    QAction *openProject;
    QAction *openSample;
    QAction *settings;
    QAction *quit;
    QAction *zoomIn;
    QAction *zoomOut;
    QAction *actualSize;
    /// Carried out by whoever has the menu bar whose keys are shown.
    QAction *keyboardShortcuts;
    QAction *about;
};

} // namespace orlenta::shell
