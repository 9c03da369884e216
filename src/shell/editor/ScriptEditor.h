#pragma once

#include <optional>

#include <QtWidgets/QWidget>

#include "model/Ids.h"
#include "shell/editor/row/ScriptTextField.h"
#include "shell/editor/ScriptCommands.h"

namespace orlenta::controller {
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class DirectionActions;
class NoticeBar;
class ProjectNotices;
class ScriptLines;
class ScriptListView;
class ScriptTabBar;
class ScriptToolbar;
class TagPalette;

/// The script of one project: its tabs, the toolbar, the tag palette, and the lines of the active tab. Follows the
/// controller's selection and the playback, and shows the project's notices below the lines. F6 and Shift+F6
/// leave the list, because Tab moves within it; Escape in the list dismisses the message.
class ScriptEditor final : public QWidget {
    Q_OBJECT
public:
    /// The session outlives the editor.
    explicit ScriptEditor(controller::ProjectSession &session, QWidget *parent = nullptr);
    /// With another kind of text field in its rows.
    ScriptEditor(controller::ProjectSession &session, const ScriptTextField::Factory &makeTextField,
                 QWidget *parent = nullptr);
    ~ScriptEditor() override;

    [[nodiscard]] ScriptListView &list() const { return *m_list; }
    [[nodiscard]] ScriptTabBar &tabBar() const { return *m_tabs; }
    [[nodiscard]] ScriptCommands &commands() { return m_commands; }
    [[nodiscard]] const DirectionActions &directionActions() const { return *m_directionActions; }
    /// Selects the line, in any tab, and gives the list the focus.
    void showLine(const model::LineId &id);

Q_SIGNALS:
    /// The microphone is blocked; the user must allow it in the desktop's settings.
    void microphoneSettingsWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();
    void connectProject();
    void connectPlayback();
    void followSelection();
    void followEditing();
    void followPlayhead();
    void followProgress();
    void refreshPlayheadRow();
    void showPlayheadLine();
    [[nodiscard]] QUrl audioAtPlayhead(const model::LineId &id) const;
    void connectDirection();
    void focusEditedText();
    void step(bool forward);
    void leaveList(bool forward);
    bool handleListKey(QKeyEvent *event);

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    ScriptCommands m_commands;
    std::unique_ptr<ScriptLines> m_lines;
    ScriptTabBar *m_tabs = nullptr;
    ScriptToolbar *m_toolbar = nullptr;
    TagPalette *m_palette = nullptr;
    ScriptListView *m_list = nullptr;
    DirectionActions *m_directionActions = nullptr;
    NoticeBar *m_notice = nullptr;
    ProjectNotices *m_notices = nullptr;
    std::optional<model::LineId> m_seenFocusId;
    std::optional<model::LineId> m_playheadId;
    std::optional<model::TabId> m_seenTabId;
};

} // namespace orlenta::shell
