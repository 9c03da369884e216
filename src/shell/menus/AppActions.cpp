#include "shell/menus/AppActions.h"

#include "shell/application/AppCommands.h"

namespace orlenta::shell {

AppActions::AppActions(AppCommands &commands, QObject *parent)
    : CommandActions({CommandId::NewProject, CommandId::OpenProject, CommandId::OpenSample, CommandId::Settings,
                      CommandId::Quit, CommandId::ZoomIn, CommandId::ZoomOut, CommandId::ActualSize,
                      CommandId::KeyboardShortcuts, CommandId::About},
                     parent) {
    onTriggered(CommandId::NewProject, [&commands] { Q_EMIT commands.newProject(); });
    onTriggered(CommandId::OpenProject, [&commands] { Q_EMIT commands.openProject(); });
    onTriggered(CommandId::OpenSample, [&commands] { Q_EMIT commands.openSampleProject(); });
    onTriggered(CommandId::Settings, [&commands] { Q_EMIT commands.openSettings(); });
    onTriggered(CommandId::Quit, [&commands] { Q_EMIT commands.quit(); });
    onTriggered(CommandId::ZoomIn, [&commands] { Q_EMIT commands.zoomIn(); });
    onTriggered(CommandId::ZoomOut, [&commands] { Q_EMIT commands.zoomOut(); });
    onTriggered(CommandId::ActualSize, [&commands] { Q_EMIT commands.actualSize(); });
    onTriggered(CommandId::About, [&commands] { Q_EMIT commands.openAbout(); });
}

} // namespace orlenta::shell
