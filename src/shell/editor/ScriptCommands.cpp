#include "shell/editor/ScriptCommands.h"

#include <chrono>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtGui/QActionGroup>
#include <QtGui/QGuiApplication>
#include <QtGui/QInputMethod>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include "audio/playback/PlaybackController.h"
#include "controller/commands/CommandTable.h"
#include "controller/document/Notices.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/generation/GenerationPlan.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TagEditing.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "shell/controls/ShownText.h"
#include "shell/editor/row/LineRow.h"
#include "shell/menus/CommandActions.h"
#include "shell/menus/MenuMnemonics.h"
#include "shell/theme/Icon.h"
#include "tags/TagInsertion.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

// A row click this soon after a text field click is the same click.
constexpr std::chrono::milliseconds sameClick{200};

/// "Take 2" with its time and voice.
QString takeTitle(const model::Project &project, const model::ProjectLine &line, qsizetype index) {
    const model::Take &take = line.takes.at(index);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(take.generatedAt.time_since_epoch());
    const QDateTime when = QDateTime::fromSecsSinceEpoch(seconds.count());
    QStringList parts{u"Take %1"_s.arg(index + 1), QLocale().toString(when, QLocale::ShortFormat)};
    if (const model::ProjectVoice *voice = project.findVoice(take.voiceId))
        parts.append(shownName(voice->castName));
    return parts.join(u"  ·  "_s);
}

} // namespace

ScriptCommands::ScriptCommands(controller::ProjectSession &session, QObject *parent)
    : QObject(parent), m_session(session), m_controller(session.controller()), m_playback(session.playback()),
      m_direction(session) {}

void ScriptCommands::connectRow(LineRow *row) {
    connect(row, &LineRow::clicked, this,
            [this, row](Qt::KeyboardModifiers modifiers) { click(row->lineId(), modifiers); });
    connect(row, &LineRow::textClicked, this, [this, row](Qt::KeyboardModifiers modifiers, const QPoint &point) {
        click(row->lineId(), modifiers, point);
    });
    connect(row, &LineRow::editRequested, this, [this, row](const QPoint &point) { editAt(row->lineId(), point); });
    connect(row, &LineRow::commandRequested, this,
            [this, row](CommandId command) { carryOut(command, row->lineId(), row); });
    connect(row, &LineRow::seekRequested, this,
            [this, row](controller::AudioKind kind, double fraction) { seek(row->lineId(), kind, fraction); });
    connect(row, &LineRow::menuRequested, this,
            [this, row](const QPoint &position) { openLineMenu(row->lineId(), position, row); });
    connect(row, &LineRow::takeMenuRequested, this,
            [this, row](const QPoint &position) { openTakeMenu(row->lineId(), position, row); });
    connectText(row);
    m_direction.connectRow(row);
}

void ScriptCommands::connectText(LineRow *row) {
    ScriptTextField &text = row->textField();
    const auto isEdited = [this, row] { return m_controller.selection().editingLineId() == row->lineId(); };
    connect(&text, &ScriptTextField::textEdited, this,
            [this, row] { m_controller.typing().type(row->lineId(), row->textField().sourceText()); });
    connect(&text, &ScriptTextField::sourceSelectionChanged, this, [this, row, isEdited] {
        if (isEdited())
            m_controller.selection().setTextSelectionRange(row->textField().sourceSelection());
    });
    connect(&text, &ScriptTextField::editingEnded, this, [this, isEdited] {
        if (!isEdited())
            return;
        m_controller.typing().commit();
        m_controller.selection().setEditingLineId(std::nullopt);
    });
    connect(&text, &ScriptTextField::escapePressed, this, &ScriptCommands::endEditing);
    connect(&text, &ScriptTextField::tabPressed, this, [this] { editNeighbour(1); });
    connect(&text, &ScriptTextField::shiftTabPressed, this, [this] { editNeighbour(-1); });
    connect(&text, &ScriptTextField::stressShortcut, this, [this] { insertTag(tags::stressTagItem()); });
    connect(&text, &ScriptTextField::undoRequested, this, [this] {
        if (m_controller.undoManager().canUndo())
            m_controller.undoManager().undo();
    });
    connect(&text, &ScriptTextField::redoRequested, this, [this] {
        if (m_controller.undoManager().canRedo())
            m_controller.undoManager().redo();
    });
}

void ScriptCommands::click(const model::LineId &id, Qt::KeyboardModifiers modifiers,
                           const std::optional<QPoint> &textPoint) {
    controller::Selection &selection = m_controller.selection();
    const bool isEdited = selection.editingLineId() == id;
    if (textPoint) {
        m_sinceTextFieldClick.start();
        // The text field handles the caret and Shift selections itself.
        if (isEdited)
            return;
        if (selection.singleSelectedLineId() == id && !modifiers.testFlag(Qt::ShiftModifier))
            return editAt(id, *textPoint);
    }
    m_controller.typing().commit();
    if (modifiers.testFlag(Qt::ShiftModifier))
        selection.toggle(id);
    else
        selection.selectAlone(id);
    const bool isTextFieldsClick =
        isEdited && m_sinceTextFieldClick.isValid() && !m_sinceTextFieldClick.hasExpired(sameClick.count());
    if (!isTextFieldsClick)
        endEditing();
}

void ScriptCommands::edit(const model::LineId &id) {
    controller::Selection &selection = m_controller.selection();
    if (selection.editingLineId() == id)
        return;
    m_controller.typing().commit();
    if (selection.singleSelectedLineId() != id)
        selection.selectAlone(id);
    selection.setTextSelectionRange(std::nullopt);
    selection.setEditingLineId(id);
}

void ScriptCommands::editAt(const model::LineId &id, const QPoint &point) {
    m_caretPoint = point;
    edit(id);
}

void ScriptCommands::editSelected() {
    if (const auto id = m_controller.selection().singleSelectedLineId())
        edit(*id);
    else
        refuse(CommandId::EditLine);
}

void ScriptCommands::refuse(CommandId command) {
    m_controller.notices().refuse(controller::CommandTable::requirement(command));
}

void ScriptCommands::endEditing() {
    controller::Selection &selection = m_controller.selection();
    m_controller.typing().commit();
    selection.setEditingLineId(std::nullopt);
    selection.normalise();
    Q_EMIT listFocusRequested();
}

void ScriptCommands::editNeighbour(int step) {
    const auto id = m_controller.selection().editingLineId();
    if (!id)
        return;
    const model::LineIdList &lines = m_controller.scriptLineIds();
    const qsizetype next = m_controller.lines().indexInScript(*id) + step;
    if (next >= 0 && next < lines.size())
        edit(lines.at(next));
    else
        endEditing();
}

QList<audio::PlaybackLine> ScriptCommands::playable(const QList<model::LineId> &ids) const {
    QList<audio::PlaybackLine> lines;
    for (const model::LineId &id : ids) {
        const model::ProjectLine *line = m_controller.lines().find(id);
        const QUrl url = line == nullptr ? QUrl() : m_controller.media().audioURL(*line);
        if (!url.isEmpty())
            lines.append({id, url});
    }
    return lines;
}

void ScriptCommands::carryOut(CommandId command, const model::LineId &id, QWidget *parent) {
    if (command == CommandId::Generate)
        generate(id);
    else if (command == CommandId::PlaySelection && m_playback.isPlaying() && m_playback.isCurrentGenerated(id))
        stop();
    else if (command == CommandId::PlaySelection)
        play(id);
    else
        m_direction.carryOut(command, id, parent);
}

void ScriptCommands::play(const model::LineId &id) {
    const QList<audio::PlaybackLine> lines = playable({id});
    if (!lines.isEmpty() && m_direction.mayPlay())
        m_playback.playLine(lines.first());
}

void ScriptCommands::seek(const model::LineId &id, controller::AudioKind kind, double fraction) {
    if (kind == controller::AudioKind::SourceRecording)
        return m_direction.seek(id, fraction);
    const QList<audio::PlaybackLine> lines = playable({id});
    if (!lines.isEmpty() && m_direction.mayPlay())
        m_playback.seek(lines.first(), fraction);
}

void ScriptCommands::stop() {
    m_playback.stop(audio::PlayheadReset::Reset);
}

bool ScriptCommands::canPlaySelection() const {
    for (const model::LineId &id : m_controller.selection().selectedLineIds())
        if (m_controller.runtime().hasGeneratedAudio(id))
            return true;
    return false;
}

void ScriptCommands::togglePlayback() {
    if (m_playback.isPlaying())
        return stop();
    const QList<audio::PlaybackLine> lines = playable(m_controller.selection().selectedLinesInScript());
    if (lines.isEmpty())
        return refuse(CommandId::PlaySelection);
    if (!m_direction.mayPlay())
        return;
    if (m_controller.selection().singleSelectedLineId())
        m_playback.playLine(lines.first());
    else
        m_playback.playAll(lines);
}

void ScriptCommands::playWholeTab() {
    const QList<audio::PlaybackLine> lines = playable(m_controller.scriptLineIds().toList());
    if (!lines.isEmpty() && m_direction.mayPlay())
        m_playback.playAll(lines);
}

void ScriptCommands::generate(const model::LineId &id) {
    m_session.generator().enqueue({id}, speech::LineGenerationQueue::Priority::Prioritized);
}

void ScriptCommands::switchTake(const model::LineId &id, const model::TakeId &take) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr || line->activeTakeId == take)
        return;
    if (m_playback.isCurrentGenerated(id))
        stop();
    m_controller.takes().switchTake(id, take);
}

void ScriptCommands::deleteTake(const model::LineId &id) {
    if (m_playback.isCurrentGenerated(id))
        stop();
    m_controller.takes().deleteGeneratedAudio(id);
}

void ScriptCommands::insertTag(const tags::TagItem &item) {
    if (!m_controller.selection().singleSelectedLineId())
        return refuse(CommandId::Stress);
    // Commit the input method's composition first, because it belongs to this text.
    QGuiApplication::inputMethod()->commit();
    std::optional<controller::TextRange> live;
    if (const auto *text = qobject_cast<const ScriptTextField *>(QApplication::focusWidget()))
        live = text->sourceSelection();
    m_controller.tagEditing().insertTag(item, live);
}

void ScriptCommands::openTakeMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return;
    const qsizetype inUse = m_controller.takes().indexInUse(*line);
    auto *menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(u"Takes of line %1"_s.arg(m_controller.lines().indexInScript(id) + 1));
    auto *group = new QActionGroup(menu);
    for (qsizetype index = 0; index < line->takes.size(); ++index) {
        const model::TakeId take = line->takes.at(index).id;
        // A single ampersand would mark a mnemonic.
        const QString title = takeTitle(m_controller.project(), *line, index).replace(u"&"_s, u"&&"_s);
        QAction *action = menu->addAction(title, menu, [this, id, take] { switchTake(id, take); });
        action->setCheckable(true);
        action->setChecked(index == inUse);
        group->addAction(action);
    }
    menu->addSeparator();
    addCommand(*menu, CommandId::DeleteTake, controller::CommandTable::command(CommandId::DeleteTake).title,
               [this, id] { deleteTake(id); })
        ->setEnabled(inUse >= 0);
    MenuMnemonics::follow(*menu);
    menu->popup(globalPosition);
}

void ScriptCommands::openLineMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent) {
    controller::ProjectController &project = m_controller;
    if (!project.selection().selectedLineIds().contains(id))
        project.selection().selectAlone(id);
    const bool hasAudio = project.runtime().hasGeneratedAudio(id);
    const controller::GenerationKind kind = controller::generationKind(project, *project.lines().find(id));
    auto *menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](CommandId command, bool isEnabled, auto carryOut, const QString &title = {}) {
        addCommand(*menu, command, title.isEmpty() ? controller::CommandTable::command(command).title : title, carryOut)
            ->setEnabled(isEnabled);
    };
    add(
        CommandId::EditLine, true, [this, id] { edit(id); }, u"Edit Text"_s);
    add(
        CommandId::Generate, controller::canGenerate(project, id), [this, id] { generate(id); },
        kind == controller::GenerationKind::Regenerate ? u"Regenerate"_s : u"Generate"_s);
    add(
        CommandId::PlaySelection, hasAudio, [this, id] { play(id); }, u"Play"_s);
    menu->addSeparator();
    m_direction.addToMenu(*menu, id, parent);
    menu->addSeparator();
    add(CommandId::DuplicateLine, true, [&project, id] { project.lines().duplicateLine(id); });
    add(CommandId::SplitLine, project.lines().canSplitLine(), [&project] { project.lines().splitLine(); });
    add(CommandId::MoveLineUp, project.lines().canMoveUp(), [&project] { project.lines().moveLineUp(); });
    add(CommandId::MoveLineDown, project.lines().canMoveDown(), [&project] { project.lines().moveLineDown(); });
    menu->addSeparator();
    add(CommandId::DeleteTake, hasAudio, [this, id] { deleteTake(id); });
    add(CommandId::DeleteLine, true, [&project, id] { project.lines().deleteLine(id); });
    MenuMnemonics::follow(*menu);
    menu->popup(globalPosition);
}

std::optional<QPoint> ScriptCommands::takeCaretPoint() {
    return std::exchange(m_caretPoint, std::nullopt);
}

} // namespace orlenta::shell
