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
class RowDensities;
class ScriptLines;
class ScriptListView;
class ScriptTabBar;
class TagPalette;
class TakeTimeScale;
class WholeTexts;

/// The script of one project: its tabs, the lines of the active tab, and the tag palette. Follows the controller's
/// selection and the playback, and shows the project's notices below the lines, which Escape in the list dismisses.
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
    [[nodiscard]] RowDensities &densities() const { return *m_densities; }
    [[nodiscard]] TakeTimeScale &timeScale() const { return *m_timeScale; }
    [[nodiscard]] const DirectionActions &directionActions() const { return *m_directionActions; }
    /// The parts that the keyboard moves between, from top to bottom.
    [[nodiscard]] QList<QWidget *> areas() const;
    /// Selects the line, in any tab, and gives the list the focus.
    void showLine(const model::LineId &id);
    /// Whether the list scrolls along with Play All. It stops once the user scrolls.
    [[nodiscard]] bool isFollowing() const { return m_isFollowing; }
    /// Shows the playing line, and the next ones when they play.
    void followPlayback();

Q_SIGNALS:
    /// The microphone is blocked; the user must allow it in the desktop's settings.
    void microphoneSettingsWanted();
    void isFollowingChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();
    void connectProject();
    void connectPlayback();
    void connectWholeTexts(LineRow *row);
    void connectView();
    void followSelection();
    void followEditing();
    void showPalette();
    void followPlayhead();
    void followProgress();
    void refreshPlayheadRow();
    void showPlayheadLine();
    void setFollowing(bool isFollowing);
    [[nodiscard]] QUrl audioAtPlayhead(const model::LineId &id) const;
    void connectDirection();
    void focusEditedText();
    void step(bool forward);
    bool handleListKey(QKeyEvent *event);

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    ScriptCommands m_commands;
    RowDensities *m_densities;
    TakeTimeScale *m_timeScale;
    std::unique_ptr<ScriptLines> m_lines;
    ScriptTabBar *m_tabs = nullptr;
    TagPalette *m_palette = nullptr;
    ScriptListView *m_list = nullptr;
    DirectionActions *m_directionActions = nullptr;
    WholeTexts *m_wholeTexts;
    NoticeBar *m_notice = nullptr;
    ProjectNotices *m_notices = nullptr;
    std::optional<model::LineId> m_seenFocusId;
    std::optional<model::LineId> m_playheadId;
    bool m_isFollowing = true;
    std::optional<model::TabId> m_seenTabId;
};

} // namespace orlenta::shell
