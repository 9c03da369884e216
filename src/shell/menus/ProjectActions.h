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

/// The commands of a project window for its menus and its toolbar. Keeps them enabled or disabled. The window carries
/// out the commands for its own parts, such as playing. Main thread; the session outlives it.
class ProjectActions final : public CommandActions {
    Q_OBJECT
public:
    explicit ProjectActions(controller::ProjectSession &session, QObject *parent = nullptr);

private:
    void connectEditing();
    void connectScript();
    void connectTabs();
    void followProject();
    void followFocus();
    void refuse(CommandId id);
    void refresh();
    void refreshUndo();
    void refreshTagToolbar();

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    const audio::PlaybackController &m_playback;
    /// To the text field with the focus.
    QList<QMetaObject::Connection> m_textConnections;
};

} // namespace orlenta::shell
