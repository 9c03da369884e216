#pragma once

class QMenuBar;

namespace orlenta::shell {

class AppActions;
class DirectionActions;
class ProjectActions;

/// Puts the menus of a project window, or those of a window without a project, into its menu bar, in the order of the
/// table of commands.
void fillMenuBar(QMenuBar &bar, const AppActions &app, const ProjectActions &project,
                 const DirectionActions &direction);
void fillMenuBar(QMenuBar &bar, const AppActions &app);

} // namespace orlenta::shell
