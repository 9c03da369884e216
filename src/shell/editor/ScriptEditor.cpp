#include "shell/editor/ScriptEditor.h"

#include <memory>

#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

#include "audio/playback/PlaybackController.h"
#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/script/TagEditing.h"
#include "controller/takes/LineRuntime.h"
#include "shell/editor/DirectionActions.h"
#include "shell/editor/list/RowDensities.h"
#include "shell/editor/list/ScriptLines.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/list/TakeTimeScale.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/ProjectNotices.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/ScriptTabBar.h"
#include "shell/editor/WholeTexts.h"
#include "shell/tags/TagPalette.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

// Maximum share of the height for the tag palette's rows, in percent, so that the script keeps most of it.
constexpr int paletteShare = 40;

} // namespace

ScriptEditor::ScriptEditor(controller::ProjectSession &session, QWidget *parent)
    : ScriptEditor(
          session, [](QWidget *row) { return new ScriptTextField(row); }, parent) {}

ScriptEditor::ScriptEditor(controller::ProjectSession &session, const ScriptTextField::Factory &makeTextField,
                           QWidget *parent)
    : QWidget(parent), m_session(session), m_controller(session.controller()), m_playback(session.playback()),
      m_commands(session), m_densities(new RowDensities(m_controller, session.services().defaults, this)),
      m_timeScale(new TakeTimeScale(this)), m_lines(std::make_unique<ScriptLines>(session, *m_densities, *m_timeScale)),
      m_tabs(new ScriptTabBar(m_controller, this)),
      m_palette(new TagPalette(
          m_controller, [this](const tags::TagItem &item) { m_commands.insertTag(item); }, this)),
      m_list(new ScriptListView(*m_lines, makeTextField, this)),
      m_directionActions(new DirectionActions(session, m_commands.direction(), *m_list)),
      m_wholeTexts(new WholeTexts(m_controller, *this)), m_notice(new NoticeBar(this)),
      m_notices(new ProjectNotices(session, *m_notice, this)) {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_notice);
    // Below the lines, so that it moves none of them.
    layout->addWidget(m_palette);
    applyMeasures();

    connect(m_list, &ScriptListView::rowCreated, &m_commands, &ScriptCommands::connectRow);
    connect(m_list, &ScriptListView::rowCreated, this, &ScriptEditor::connectWholeTexts);
    connect(m_list, &ScriptListView::stepRequested, this, &ScriptEditor::step);
    connect(m_list, &ScriptListView::backgroundClicked, &m_commands, &ScriptCommands::endEditing);
    connect(&m_commands, &ScriptCommands::listFocusRequested, m_list,
            [this] { m_list->setFocus(Qt::OtherFocusReason); });
    connectProject();
    connectPlayback();
    connectDirection();
    connectView();
    m_seenTabId = m_controller.project().activeTabId;
    m_list->reload();
    followSelection();
    followEditing();
}

// The list's rows use m_lines, so delete the list first.
ScriptEditor::~ScriptEditor() {
    delete m_list;
}

void ScriptEditor::connectProject() {
    controller::ProjectController &project = m_controller;
    controller::onAnyChange<controller::ScriptLinesChanged>(project, this, [this, &project] {
        const bool isOtherTab =
            std::exchange(m_seenTabId, project.project().activeTabId) != project.project().activeTabId;
        m_list->reload();
        if (isOtherTab)
            m_list->scrollToTop();
        followSelection();
    });
    controller::onChange<controller::LinesChanged>(project, this, [this](const auto &change) {
        for (auto line = change.lines.cbegin(); line != change.lines.cend(); ++line)
            m_list->refreshRow(line.key());
    });
    controller::onAnyChange<controller::VoicesChanged, controller::PresetsChanged, controller::TypingFlushed>(
        project, this, [this] { m_list->refreshRows(); });
    connect(&m_session.generator().queue(), &speech::LineGenerationQueue::progressChanged, m_list,
            &ScriptListView::refreshRows);
    controller::onAnyChange<controller::SelectionChanged>(project, this, [this] { followSelection(); });
    controller::onAnyChange<controller::EditingLineChanged>(project, this, [this] { followEditing(); });
}

void ScriptEditor::connectPlayback() {
    const audio::PlaybackController &playback = m_playback;
    using Playback = audio::PlaybackController;
    connect(&playback, &Playback::currentlyPlayingLineIDChanged, this, &ScriptEditor::followPlayhead);
    connect(&playback, &Playback::currentAudioSourceChanged, this, &ScriptEditor::followPlayhead);
    connect(&playback, &Playback::isPlayingChanged, this, &ScriptEditor::refreshPlayheadRow);
    connect(&playback, &Playback::playbackProgressChanged, this, &ScriptEditor::followProgress);
    connect(&playback, &Playback::isPlayingSequenceChanged, this, [this, &playback] {
        if (playback.isPlayingSequence())
            followPlayback();
    });
    // A user who scrolls wants to look at something else.
    connect(m_list, &ScriptListView::scrolled, this, [this] { setFollowing(!m_playback.isPlayingSequence()); });
}

void ScriptEditor::setFollowing(bool isFollowing) {
    if (std::exchange(m_isFollowing, isFollowing) != isFollowing)
        Q_EMIT isFollowingChanged();
}

void ScriptEditor::followPlayback() {
    setFollowing(true);
    showPlayheadLine();
}

void ScriptEditor::connectDirection() {
    connect(&m_session.recordings(), &controller::DirectionRecordings::changed, m_list, &ScriptListView::refreshRow);
    connect(&m_session.recordings(), &controller::DirectionRecordings::attentionWanted, m_list,
            &ScriptListView::ensureVisible);
    connect(&m_session.recordings(), &controller::DirectionRecordings::microphoneSettingsWanted, this,
            &ScriptEditor::microphoneSettingsWanted);
    connect(&m_commands.direction(), &DirectionCommands::notesRequested, this, [this](const model::LineId &id) {
        m_list->ensureVisible(id);
        if (LineRow *row = m_list->rowFor(id))
            row->editNotes();
    });
}

QList<QWidget *> ScriptEditor::areas() const {
    return {m_tabs, m_list, m_notice, m_palette};
}

void ScriptEditor::connectWholeTexts(LineRow *row) {
    connect(row, &LineRow::wholeTextRequested, this, [this, row] {
        m_commands.endEditing();
        m_wholeTexts->editText(row->lineId());
    });
    connect(row, &LineRow::wholeNotesRequested, this, [this, row] { m_wholeTexts->editNotes(row->lineId()); });
}

void ScriptEditor::connectView() {
    connect(&m_controller.tagEditing(), &controller::TagEditing::tagToolbarExpandedChanged, this,
            &ScriptEditor::showPalette);
    connect(m_densities, &RowDensities::currentChanged, m_list, &ScriptListView::changeDensity);
    // Queued: the scale changes while a row reads its line.
    connect(m_timeScale, &TakeTimeScale::laneSecondsChanged, m_list, &ScriptListView::refreshRows,
            Qt::QueuedConnection);
    controller::onAnyChange<controller::ScriptLinesChanged>(
        m_controller, this, [this] { m_timeScale->keepOnly(m_controller.scriptLineIds()); });
}

void ScriptEditor::showLine(const model::LineId &id) {
    m_commands.endEditing();
    for (const model::ProjectTab &tab : m_controller.project().tabs)
        if (tab.lineIds.contains(id)) {
            m_controller.tabs().setActiveTab(model::TabId(tab.id));
            break;
        }
    m_controller.selection().selectAlone(id);
    m_list->ensureVisible(id);
}

void ScriptEditor::followSelection() {
    m_list->refreshRows();
    const auto focusId = m_controller.selection().selectionFocusId();
    if (std::exchange(m_seenFocusId, focusId) != focusId && focusId)
        m_list->ensureVisible(*focusId);
}

void ScriptEditor::showPalette() {
    m_palette->setVisible(m_controller.selection().editingLineId() || m_controller.tagEditing().tagToolbarExpanded());
}

void ScriptEditor::followEditing() {
    m_list->refreshRows();
    showPalette();
    const auto id = m_controller.selection().editingLineId();
    if (!id)
        return;
    m_controller.typing().beginEditing(*id);
    m_list->ensureVisible(*id);
    // Queued: move the focus once the current event has been handled.
    QMetaObject::invokeMethod(this, &ScriptEditor::focusEditedText, Qt::QueuedConnection);
}

void ScriptEditor::focusEditedText() {
    const auto id = m_controller.selection().editingLineId();
    LineRow *row = id ? m_list->rowFor(*id) : nullptr;
    if (row == nullptr)
        return;
    ScriptTextField &text = row->textField();
    const auto point = m_commands.takeCaretPoint();
    if (text.isCut())
        return Q_EMIT row->wholeTextRequested();
    const auto range = m_controller.selection().textSelectionRange();
    if (point)
        text.placeCaretAt(*point);
    else if (range)
        text.setSourceSelection(*range);
    else
        text.moveCursor(QTextCursor::End);
    text.setFocus(Qt::OtherFocusReason);
}

void ScriptEditor::followPlayhead() {
    const audio::PlaybackController &playback = m_playback;
    const auto playing = playback.currentlyPlayingLineID();
    const auto now = playing ? std::optional(model::LineId(playing->uuid())) : std::nullopt;
    m_lines->setPlayheadAudio(now ? audioAtPlayhead(*now) : QUrl());
    const auto before = std::exchange(m_playheadId, now);
    const bool follows = before && before != now && playback.isPlayingSequence() && m_isFollowing;
    if (before && before != now)
        m_list->refreshRow(*before);
    refreshPlayheadRow();
    if (follows)
        showPlayheadLine();
}

QUrl ScriptEditor::audioAtPlayhead(const model::LineId &id) const {
    const controller::LineRuntimeState state = m_controller.runtime().state(id);
    return m_playback.isCurrentSource(id) ? state.directionAudioURL : state.generatedAudioURL;
}

void ScriptEditor::refreshPlayheadRow() {
    if (m_playheadId)
        m_list->refreshRow(*m_playheadId);
}

void ScriptEditor::followProgress() {
    // This runs many times a second, so move only the playhead.
    LineRow *row = m_playheadId ? m_list->rowFor(*m_playheadId) : nullptr;
    if (row == nullptr || m_lines->playheadAudio() != audioAtPlayhead(*m_playheadId))
        return;
    using controller::AudioKind;
    row->setProgress(m_playback.isCurrentSource(*m_playheadId) ? AudioKind::SourceRecording : AudioKind::Generated,
                     m_playback.playbackProgress());
}

void ScriptEditor::showPlayheadLine() {
    const bool isWriting =
        m_controller.selection().editingLineId() || qobject_cast<NotesField *>(window()->focusWidget()) != nullptr;
    if (m_playheadId && !isWriting)
        m_list->showAtThird(*m_playheadId);
}

void ScriptEditor::step(bool forward) {
    m_list->setFocus(Qt::OtherFocusReason);
    if (forward)
        m_controller.selection().selectNext();
    else
        m_controller.selection().selectPrevious();
}

bool ScriptEditor::handleListKey(QKeyEvent *event) {
    controller::Selection &selection = m_controller.selection();
    const auto is = [event](CommandId id) { return isKeyOf(*event, id); };
    if (is(CommandId::PlaySelection)) {
        if (!event->isAutoRepeat())
            m_commands.togglePlayback();
    } else if (is(CommandId::EditLine)) {
        m_commands.editSelected();
    } else if (is(CommandId::NextLine)) {
        selection.selectNext();
    } else if (is(CommandId::PreviousLine)) {
        selection.selectPrevious();
    } else if (is(CommandId::ExtendDown)) {
        selection.extendDown();
    } else if (is(CommandId::ExtendUp)) {
        selection.extendUp();
    } else if (is(CommandId::EnterControls)) {
        if (LineRow *row = m_seenFocusId ? m_list->rowFor(*m_seenFocusId) : nullptr)
            row->focusControls();
    } else {
        return is(CommandId::DismissNotice) && m_notices->dismiss();
    }
    return true;
}

void ScriptEditor::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    m_palette->setRowsLimit(height() * paletteShare / 100);
}

void ScriptEditor::keyPressEvent(QKeyEvent *event) {
    const bool inList = m_list->hasFocus() || m_list->isAncestorOf(QApplication::focusWidget());
    if (!inList || m_controller.selection().editingLineId() || !handleListKey(event))
        event->ignore();
}

void ScriptEditor::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyMeasures();
}

void ScriptEditor::applyMeasures() {
    setMinimumWidth(Theme::unit(this) * 80);
}

void ScriptEditor::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() != QContextMenuEvent::Keyboard || !m_list->hasFocus() || !m_seenFocusId)
        return event->ignore();
    if (LineRow *row = m_list->rowFor(*m_seenFocusId))
        m_commands.openLineMenu(*m_seenFocusId, row->mapToGlobal(row->rect().center()), row);
}

} // namespace orlenta::shell
