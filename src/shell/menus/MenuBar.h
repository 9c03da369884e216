#pragma once

class QMenuBar;

namespace orlenta::shell {

class AppActions;
class DirectionActions;
class ProjectActions;

/// Fills the menu bar of a window with or without a project, in the order of the command table.
void fillMenuBar(QMenuBar &bar, const AppActions &app, const ProjectActions &project,
                 const DirectionActions &direction);
void fillMenuBar(QMenuBar &bar, const AppActions &app);

} // namespace orlenta::shell
