#include "shell/menus/ProjectActions.h"

#include <algorithm>

#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "audio/playback/PlaybackController.h"
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
namespace {

QAction *projectAction(QObject *owner, const QString &title, const QString &key, const QString &tip,
                       const QString &icon = {}) {
    auto *action = new QAction(title, owner);
    action->setShortcut(QKeySequence(key));
    const QString keyText = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(keyText.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keyText));
    action->setStatusTip(tip);
    if (!icon.isEmpty())
        action->setIcon(Icon::named(icon));
    return action;
}

} // namespace

ProjectActions::ProjectActions(controller::ProjectSession &session, QObject *parent)
    : QObject(parent), closeWindow(projectAction(this, u"Close Window"_s, u"Ctrl+W"_s, u"Close this project"_s)),
      save(projectAction(this, u"Save Project"_s, u"Ctrl+S"_s, u"Save this project"_s, u"save"_s)),
      exportAudio(projectAction(this, u"Export Audio..."_s, u"Ctrl+Shift+E"_s, u"Export the selected lines' audio"_s,
                                u"export"_s)),
      account(projectAction(this, u"Account…"_s, {}, u"Connect an account or use local voices"_s, u"account"_s)),
      undo(projectAction(this, u"Undo"_s, u"Ctrl+Z"_s, u"Undo"_s, u"undo"_s)),
      redo(projectAction(this, u"Redo"_s, u"Ctrl+Shift+Z"_s, u"Redo"_s, u"redo"_s)),
      cut(projectAction(this, u"Cut"_s, u"Ctrl+X"_s, u"Cut the selected text or lines"_s)),
      copy(projectAction(this, u"Copy"_s, u"Ctrl+C"_s, u"Copy the selected text or lines"_s)),
      paste(projectAction(this, u"Paste"_s, u"Ctrl+V"_s, u"Paste text or lines"_s)),
      selectAll(projectAction(this, u"Select All"_s, u"Ctrl+A"_s, u"Select all text, or all lines of the tab"_s)),
      chooseVoice(projectAction(this, u"Choose Voice..."_s, u"Ctrl+Shift+B"_s, u"Search for a voice"_s, u"voice"_s)),
      generate(
          projectAction(this, u"Generate"_s, u"Ctrl+G"_s, u"Generate speech for the selected lines"_s, u"waveform"_s)),
      addLine(projectAction(this, u"Add Line"_s, u"Ctrl+Alt+L"_s, u"Add a line to this tab"_s, u"plus"_s)),
      duplicateLine(
          projectAction(this, u"Duplicate Line"_s, u"Ctrl+D"_s, u"Duplicate the selected line"_s, u"duplicate"_s)),
      splitLine(projectAction(this, u"Split into Sentences"_s, u"Ctrl+Shift+Return"_s,
                              u"Make one line of each sentence"_s, u"split"_s)),
      deleteLine(
          projectAction(this, u"Delete Line"_s, u"Ctrl+Backspace"_s, u"Delete the selected lines"_s, u"trash"_s)),
      moveLineUp(
          projectAction(this, u"Move Line Up"_s, u"Ctrl+Alt+Up"_s, u"Move the selected line up"_s, u"chevron-up"_s)),
      moveLineDown(projectAction(this, u"Move Line Down"_s, u"Ctrl+Alt+Down"_s, u"Move the selected line down"_s,
                                 u"chevron-down"_s)),
      newTab(projectAction(this, u"New Tab"_s, u"Ctrl+T"_s, u"Add a tab"_s)),
      closeTab(projectAction(this, u"Close Tab"_s, u"Ctrl+Shift+W"_s, u"Close this tab and remove its lines"_s)),
      nextTab(projectAction(this, u"Next Tab"_s, u"Ctrl+Shift+]"_s, u"Show the next tab"_s)),
      previousTab(projectAction(this, u"Previous Tab"_s, u"Ctrl+Shift+["_s, u"Show the previous tab"_s)),
      toggleTagToolbar(projectAction(this, u"Expand Tag Toolbar"_s, u"Ctrl+Shift+T"_s,
                                     u"Show the performance tags as rows or as menus"_s)),
      play(projectAction(this, u"Play"_s, u"Ctrl+P"_s, u"Play the selected lines"_s, u"play"_s)),
      playAll(projectAction(this, u"Play All"_s, u"Ctrl+Shift+P"_s, u"Play all lines of this tab"_s, u"play-all"_s)),
      toggleInspector(
          projectAction(this, u"Hide Inspector"_s, u"Ctrl+Alt+I"_s, u"Show or hide the inspector"_s, u"inspector"_s)),
      m_controller(session.controller()), m_playback(session.playback()), m_generator(session.generator()) {
    // US keyboards send the shifted sign for these, others the plain one.
    nextTab->setShortcuts({QKeySequence(u"Ctrl+Shift+]"_s), QKeySequence(u"Ctrl+}"_s), QKeySequence(u"Ctrl+PgDown"_s)});
    previousTab->setShortcuts(
        {QKeySequence(u"Ctrl+Shift+["_s), QKeySequence(u"Ctrl+{"_s), QKeySequence(u"Ctrl+PgUp"_s)});
    connectEditing();
    connectLines();
    connectTabs();
    connect(&m_playback, &audio::PlaybackController::isPlayingChanged, this, &ProjectActions::refresh);
    controller::onAnyChange<controller::SelectionChanged, controller::ScriptLinesChanged, controller::TabsChanged,
                            controller::RuntimeChanged, controller::LinesChanged>(m_controller, this,
                                                                                  [this] { refresh(); });
    connect(&m_controller.exporting(), &controller::Exporting::isBusyChanged, this, &ProjectActions::refresh);
    connect(&m_controller.undoManager(), &controller::UndoManager::stateChanged, this, &ProjectActions::refreshUndo);
    controller::onAnyChange<controller::EditingLineChanged>(m_controller, this, [this] { refreshUndo(); });
    connect(qApp, &QApplication::focusChanged, this, &ProjectActions::refreshUndo);
    connect(&m_controller.tagEditing(), &controller::TagEditing::tagToolbarExpandedChanged, this,
            &ProjectActions::refreshTagToolbar);
    refresh();
    refreshUndo();
    refreshTagToolbar();
}

void ProjectActions::connectEditing() {
    connect(undo, &QAction::triggered, this, [this] {
        if (TextCommands::undo())
            return;
        // What is being typed is the latest change; it becomes a step before one is undone.
        m_controller.typing().commit();
        m_controller.undoManager().undo();
    });
    connect(redo, &QAction::triggered, this, [this] {
        if (TextCommands::redo())
            return;
        // Typing since the last undo is a change of its own, behind which nothing is left to redo.
        m_controller.typing().commit();
        m_controller.undoManager().redo();
    });
    connect(cut, &QAction::triggered, this, [this] {
        if (!TextCommands::send(TextCommands::Command::Cut) && !LineClipboardCommands::cut(m_controller))
            QApplication::beep();
    });
    connect(copy, &QAction::triggered, this, [this] {
        if (!TextCommands::send(TextCommands::Command::Copy) && !LineClipboardCommands::copy(m_controller))
            QApplication::beep();
    });
    connect(paste, &QAction::triggered, this, [this] {
        if (!TextCommands::send(TextCommands::Command::Paste) && !LineClipboardCommands::paste(m_controller))
            QApplication::beep();
    });
    connect(selectAll, &QAction::triggered, this, &ProjectActions::selectEverything);
}

void ProjectActions::connectLines() {
    connect(generate, &QAction::triggered, this, [this] { m_generator.generateSelectedLines(); });
    connect(addLine, &QAction::triggered, this, [this] { m_controller.lines().addLine(); });
    connect(duplicateLine, &QAction::triggered, this, [this] {
        if (const auto id = m_controller.selection().singleSelectedLineId())
            m_controller.lines().duplicateLine(*id);
    });
    connect(splitLine, &QAction::triggered, this, [this] { m_controller.lines().splitLine(); });
    connect(deleteLine, &QAction::triggered, this, &ProjectActions::deleteSelectedLines);
    connect(moveLineUp, &QAction::triggered, this, [this] { m_controller.lines().moveLineUp(); });
    connect(toggleTagToolbar, &QAction::triggered, &m_controller.tagEditing(),
            &controller::TagEditing::toggleTagToolbarExpanded);
    connect(moveLineDown, &QAction::triggered, this, [this] { m_controller.lines().moveLineDown(); });
}

void ProjectActions::connectTabs() {
    connect(newTab, &QAction::triggered, this, [this] { m_controller.tabs().addTab(); });
    connect(closeTab, &QAction::triggered, this, [this] {
        if (const model::ProjectTab *tab = m_controller.activeTab(); tab != nullptr)
            m_controller.tabs().closeTab(tab->id);
    });
    connect(nextTab, &QAction::triggered, this, [this] { m_controller.tabs().selectNextTab(); });
    connect(previousTab, &QAction::triggered, this, [this] { m_controller.tabs().selectPreviousTab(); });
}

void ProjectActions::deleteSelectedLines() {
    m_controller.lines().deleteLines(m_controller.selection().selectedLinesInScript(),
                                     controller::LineEditing::Removal::Delete);
}

void ProjectActions::selectEverything() {
    if (!TextCommands::send(TextCommands::Command::SelectAll) && !m_controller.scriptLineIds().isEmpty())
        m_controller.selection().selectAll();
}

void ProjectActions::refresh() {
    const controller::Selection &selection = m_controller.selection();
    const bool hasSelection = !selection.selectedLineIds().isEmpty();
    const bool hasOneLine = selection.singleSelectedLineId().has_value();
    chooseVoice->setEnabled(hasOneLine);
    generate->setEnabled(hasSelection);
    duplicateLine->setEnabled(hasOneLine);
    splitLine->setEnabled(m_controller.lines().canSplitLine());
    deleteLine->setEnabled(hasSelection);
    moveLineUp->setEnabled(m_controller.lines().canMoveUp());
    moveLineDown->setEnabled(m_controller.lines().canMoveDown());
    closeTab->setEnabled(m_controller.tabs().canCloseTab());
    nextTab->setEnabled(m_controller.project().tabs.size() > 1);
    previousTab->setEnabled(m_controller.project().tabs.size() > 1);

    const auto hasAudio = [this](const model::LineId &id) { return m_controller.runtime().hasGeneratedAudio(id); };
    const QSet<model::LineId> &selected = selection.selectedLineIds();
    const bool canExport = hasSelection && std::all_of(selected.begin(), selected.end(), hasAudio);
    exportAudio->setEnabled(canExport && !m_controller.exporting().isBusy());
    const bool isPlaying = m_playback.isPlaying();
    play->setText(isPlaying ? u"Stop"_s : u"Play"_s);
    play->setIcon(Icon::named(isPlaying ? u"stop"_s : u"play"_s));
    play->setToolTip(isPlaying ? u"Stop playing (Ctrl+P)"_s : u"Play the selected lines (Ctrl+P)"_s);
    play->setEnabled(isPlaying || std::any_of(selected.begin(), selected.end(), hasAudio));
    const model::LineIdList &script = m_controller.scriptLineIds();
    playAll->setEnabled(std::any_of(script.begin(), script.end(), hasAudio));
}

void ProjectActions::refreshTagToolbar() {
    toggleTagToolbar->setText(m_controller.tagEditing().tagToolbarExpanded() ? u"Compact Tag Toolbar"_s
                                                                             : u"Expand Tag Toolbar"_s);
}

void ProjectActions::refreshUndo() {
    const controller::UndoManager &manager = m_controller.undoManager();
    const auto titled = [](QAction &action, const QString &title, const QString &name) {
        action.setText(name.isEmpty() ? title : QStringLiteral("%1 %2").arg(title, name));
        action.setToolTip(QStringLiteral("%1 (%2)").arg(action.text(), action.shortcut().toString()));
    };
    titled(*undo, u"Undo"_s, manager.undoActionName());
    titled(*redo, u"Redo"_s, manager.redoActionName());
    const bool isEditing = m_controller.selection().editingLineId().has_value();
    undo->setEnabled(manager.canUndo() || TextCommands::canUndo() || isEditing);
    redo->setEnabled(manager.canRedo() || TextCommands::canRedo());
}

} // namespace orlenta::shell
