#include "shell/menus/ProjectActions.h"

#include <algorithm>
#include <utility>

#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "audio/playback/PlaybackController.h"
#include "controller/commands/CommandTable.h"
#include "controller/document/Notices.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/export/Exporting.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/script/TagEditing.h"
#include "controller/takes/LineRuntime.h"
#include "shell/menus/LineClipboardCommands.h"
#include "shell/menus/TextCommands.h"
#include "shell/theme/Icon.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ProjectActions::ProjectActions(controller::ProjectSession &session, QObject *parent)
    : CommandActions({CommandId::CloseWindow,
                      CommandId::SaveProject,
                      CommandId::ExportAudio,
                      CommandId::Account,
                      CommandId::Undo,
                      CommandId::Redo,
                      CommandId::Cut,
                      CommandId::Copy,
                      CommandId::Paste,
                      CommandId::SelectAll,
                      CommandId::ChooseVoice,
                      CommandId::Generate,
                      CommandId::StopGenerating,
                      CommandId::AddLine,
                      CommandId::InsertLine,
                      CommandId::DuplicateLine,
                      CommandId::SplitLine,
                      CommandId::DeleteLine,
                      CommandId::MoveLineUp,
                      CommandId::MoveLineDown,
                      CommandId::ToggleTagToolbar,
                      CommandId::NewTab,
                      CommandId::CloseTab,
                      CommandId::NextTab,
                      CommandId::PreviousTab,
                      CommandId::Play,
                      CommandId::PlayAll,
                      CommandId::ToggleInspector,
                      CommandId::CompactRows,
                      CommandId::SameTimeScale,
                      CommandId::NextArea,
                      CommandId::PreviousArea},
                     parent),
      m_session(session), m_controller(session.controller()), m_playback(session.playback()) {
    // A key that is held down would pay for take after take.
    (*this)[CommandId::Generate]->setAutoRepeat(false);
    connectEditing();
    connectScript();
    connectTabs();
    followProject();
    refresh();
    refreshUndo();
    refreshTagToolbar();
}

void ProjectActions::connectEditing() {
    onTriggered(CommandId::Undo, [this] {
        if (TextCommands::undo())
            return;
        // The current typing is the latest change, so turn it into a step first.
        m_controller.typing().commit();
        m_controller.undoManager().undo();
    });
    onTriggered(CommandId::Redo, [this] {
        if (TextCommands::redo())
            return;
        // Typing since the last undo is a new change and clears the redo steps.
        m_controller.typing().commit();
        m_controller.undoManager().redo();
    });
    const auto textOrLines = [this](CommandId id, TextCommands::Command text,
                                    bool (*lines)(const controller::ProjectController &)) {
        onTriggered(id, [this, id, text, lines] {
            if (!TextCommands::send(text) && !lines(m_controller))
                refuse(id);
        });
    };
    textOrLines(CommandId::Cut, TextCommands::Command::Cut, &LineClipboardCommands::cut);
    textOrLines(CommandId::Copy, TextCommands::Command::Copy, &LineClipboardCommands::copy);
    textOrLines(CommandId::Paste, TextCommands::Command::Paste, &LineClipboardCommands::paste);
    onTriggered(CommandId::SelectAll, [this] {
        if (TextCommands::send(TextCommands::Command::SelectAll))
            return;
        if (m_controller.scriptLineIds().isEmpty())
            return refuse(CommandId::SelectAll);
        m_controller.selection().selectAll();
    });
}

void ProjectActions::refuse(CommandId id) {
    m_controller.notices().refuse(controller::CommandTable::requirement(id));
}

void ProjectActions::connectScript() {
    onTriggered(CommandId::Generate, [this] { m_session.generator().generateSelectedLines(); });
    onTriggered(CommandId::StopGenerating, [this] { m_session.generator().queue().stop(); });
    onTriggered(CommandId::AddLine, [this] { m_controller.lines().addLine(); });
    onTriggered(CommandId::InsertLine, [this] { m_controller.lines().insertLineBelow(); });
    onTriggered(CommandId::DuplicateLine, [this] {
        if (const auto id = m_controller.selection().singleSelectedLineId())
            m_controller.lines().duplicateLine(*id);
    });
    onTriggered(CommandId::SplitLine, [this] {
        if (m_controller.lines().canSplitLine())
            m_controller.lines().splitLine();
        else
            refuse(CommandId::SplitLine);
    });
    onTriggered(CommandId::DeleteLine, [this] {
        m_controller.lines().deleteLines(m_controller.selection().selectedLinesInScript(),
                                         controller::LineEditing::Removal::Delete);
    });
    onTriggered(CommandId::MoveLineUp, [this] { m_controller.lines().moveLineUp(); });
    onTriggered(CommandId::MoveLineDown, [this] { m_controller.lines().moveLineDown(); });
    onTriggered(CommandId::ToggleTagToolbar, [this] { m_controller.tagEditing().toggleTagToolbarExpanded(); });
}

void ProjectActions::connectTabs() {
    onTriggered(CommandId::NewTab, [this] { m_controller.tabs().addTab(); });
    onTriggered(CommandId::CloseTab, [this] {
        if (const model::ProjectTab *tab = m_controller.activeTab(); tab != nullptr)
            m_controller.tabs().closeTab(tab->id);
    });
    onTriggered(CommandId::NextTab, [this] { m_controller.tabs().selectNextTab(); });
    onTriggered(CommandId::PreviousTab, [this] { m_controller.tabs().selectPreviousTab(); });
}

void ProjectActions::followProject() {
    using namespace controller;
    onAnyChange<SelectionChanged, ScriptLinesChanged, TabsChanged, RuntimeChanged>(m_controller, this,
                                                                                   [this] { refresh(); });
    onAnyChange<EditingLineChanged>(m_controller, this, [this] { refreshUndo(); });
    connect(&m_playback, &audio::PlaybackController::isPlayingChanged, this, &ProjectActions::refresh);
    connect(&m_session.generator().queue(), &speech::LineGenerationQueue::progressChanged, this,
            &ProjectActions::refresh);
    connect(&m_controller.exporting(), &Exporting::isBusyChanged, this, &ProjectActions::refresh);
    connect(&m_controller.undoManager(), &UndoManager::stateChanged, this, &ProjectActions::refreshUndo);
    connect(qApp, &QApplication::focusChanged, this, &ProjectActions::followFocus);
    connect(&m_controller.tagEditing(), &TagEditing::tagToolbarExpandedChanged, this,
            &ProjectActions::refreshTagToolbar);
}

void ProjectActions::followFocus() {
    for (const QMetaObject::Connection &connection : std::as_const(m_textConnections))
        disconnect(connection);
    m_textConnections = TextCommands::watchUndo(this, [this] { refreshUndo(); });
    refreshUndo();
}

void ProjectActions::refresh() {
    const controller::Selection &selection = m_controller.selection();
    const bool hasSelection = !selection.selectedLineIds().isEmpty();
    const bool hasOneLine = selection.singleSelectedLineId().has_value();
    const bool hasTabs = m_controller.project().tabs.size() > 1;
    const auto enable = [this](CommandId id, bool isEnabled) { setEnabled(id, isEnabled); };
    enable(CommandId::ChooseVoice, hasOneLine);
    enable(CommandId::Generate, hasSelection);
    enable(CommandId::InsertLine, hasSelection);
    enable(CommandId::StopGenerating, m_session.generator().queue().canStop());
    enable(CommandId::DuplicateLine, hasOneLine);
    enable(CommandId::SplitLine, hasOneLine);
    enable(CommandId::DeleteLine, hasSelection);
    enable(CommandId::MoveLineUp, m_controller.lines().canMoveUp());
    enable(CommandId::MoveLineDown, m_controller.lines().canMoveDown());
    enable(CommandId::CloseTab, m_controller.tabs().canCloseTab());
    enable(CommandId::NextTab, hasTabs);
    enable(CommandId::PreviousTab, hasTabs);

    const auto hasAudio = [this](const model::LineId &id) { return m_controller.runtime().hasGeneratedAudio(id); };
    const QSet<model::LineId> &selected = selection.selectedLineIds();
    const bool canExport = hasSelection && std::all_of(selected.begin(), selected.end(), hasAudio);
    enable(CommandId::ExportAudio, canExport && !m_controller.exporting().isBusy());
    const bool isPlaying = m_playback.isPlaying();
    QAction &play = *(*this)[CommandId::Play];
    play.setText(isPlaying ? u"Stop"_s : u"Play"_s);
    play.setIcon(Icon::named(isPlaying ? u"stop"_s : u"play"_s));
    enable(CommandId::Play, isPlaying || std::any_of(selected.begin(), selected.end(), hasAudio));
    if (isPlaying)
        play.setToolTip(tipWithKey(u"Stop playing"_s, CommandId::Play));
    const model::LineIdList &script = m_controller.scriptLineIds();
    enable(CommandId::PlayAll, std::any_of(script.begin(), script.end(), hasAudio));
}

void ProjectActions::refreshTagToolbar() {
    (*this)[CommandId::ToggleTagToolbar]->setText(
        m_controller.tagEditing().tagToolbarExpanded() ? u"Compact Tag Toolbar"_s : u"Expand Tag Toolbar"_s);
}

void ProjectActions::refreshUndo() {
    const controller::UndoManager &manager = m_controller.undoManager();
    const auto show = [this](CommandId id, const QString &title, const QString &name, bool isEnabled) {
        QAction &action = *(*this)[id];
        action.setText(name.isEmpty() ? title : QStringLiteral("%1 %2").arg(title, name));
        const QString tip = tipWithKey(action.text(), id);
        action.setToolTip(isEnabled ? tip : tipWithRequirement(tip, id));
        action.setEnabled(isEnabled);
    };
    const bool isEditing = m_controller.selection().editingLineId().has_value();
    show(CommandId::Undo, u"Undo"_s, manager.undoActionName(),
         manager.canUndo() || TextCommands::canUndo() || isEditing);
    show(CommandId::Redo, u"Redo"_s, manager.redoActionName(), manager.canRedo() || TextCommands::canRedo());
}

} // namespace orlenta::shell
