#pragma once

#include "shell/menus/CommandActions.h"

namespace orlenta::audio {
class PlaybackController;
}
namespace orlenta::controller {
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

/// The commands of one project window, for its menus and its toolbar alike, and whether they can be used at the moment.
/// What concerns the window's own parts, playing among it, is the window's to carry out. Main thread; the session
/// outlives it.
class ProjectActions final : public CommandActions {
    Q_OBJECT
public:
    explicit ProjectActions(controller::ProjectSession &session, QObject *parent = nullptr);

private:
    void connectEditing();
    void connectScript();
    void connectTabs();
    void followProject();
    void refresh();
    void refreshUndo();
    void refreshTagToolbar();

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    const audio::PlaybackController &m_playback;
};

} // namespace orlenta::shell
