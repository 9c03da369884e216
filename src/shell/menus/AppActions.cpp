#include "shell/menus/AppActions.h"

#include <QtGui/QAction>

#include "shell/application/AppCommands.h"
#include "shell/theme/Icon.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QAction *appAction(QObject *owner, const QString &title, const QKeySequence &key, const QString &tip) {
    auto *action = new QAction(title, owner);
    action->setShortcut(key);
    action->setToolTip(tip);
    action->setStatusTip(tip);
    return action;
}

} // namespace

AppActions::AppActions(AppCommands &commands, QObject *parent)
    : QObject(parent),
      newProject(appAction(this, u"New Project"_s, QKeySequence(u"Ctrl+N"_s), u"Make a new project"_s)),
      openProject(appAction(this, u"Open Project..."_s, QKeySequence(u"Ctrl+O"_s), u"Open a project folder"_s)),
      openSample(appAction(this, u"Open Sample Project"_s, {}, u"Open a copy of the sample project"_s)),
      settings(appAction(this, u"Settings…"_s, QKeySequence(u"Ctrl+,"_s), u"Change the preferences"_s)),
      quit(appAction(this, u"Quit Orlenta"_s, QKeySequence(u"Ctrl+Q"_s), u"Close all projects and quit"_s)),
      zoomIn(appAction(this, u"Zoom In"_s, QKeySequence(u"Ctrl+="_s), u"Make text and controls larger"_s)),
      zoomOut(appAction(this, u"Zoom Out"_s, QKeySequence(u"Ctrl+-"_s), u"Make text and controls smaller"_s)),
      actualSize(appAction(this, u"Actual Size"_s, QKeySequence(u"Ctrl+0"_s), u"Show text and controls at size 1"_s)),
      keyboardShortcuts(
          appAction(this, u"Keyboard Shortcuts"_s, QKeySequence(u"F1"_s), u"Show all keys of this window"_s)),
      about(appAction(this, u"About Orlenta"_s, {}, u"Version and licence"_s)) {
    zoomIn->setShortcuts({QKeySequence(u"Ctrl+="_s), QKeySequence(u"Ctrl++"_s)});
    newProject->setIcon(Icon::named(u"plus"_s));
    openProject->setIcon(Icon::named(u"folder"_s));
    settings->setIcon(Icon::named(u"gear"_s));
    connect(newProject, &QAction::triggered, &commands, &AppCommands::newProject);
    connect(openProject, &QAction::triggered, &commands, &AppCommands::openProject);
    connect(openSample, &QAction::triggered, &commands, &AppCommands::openSampleProject);
    connect(settings, &QAction::triggered, &commands, &AppCommands::openSettings);
    connect(quit, &QAction::triggered, &commands, &AppCommands::quit);
    connect(zoomIn, &QAction::triggered, &commands, &AppCommands::zoomIn);
    connect(zoomOut, &QAction::triggered, &commands, &AppCommands::zoomOut);
    connect(actualSize, &QAction::triggered, &commands, &AppCommands::actualSize);
    connect(about, &QAction::triggered, &commands, &AppCommands::openAbout);
}

} // namespace orlenta::shell
