#include "shell/editor/DirectionCommands.h"

#include <qcoro/qcorotask.h>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>

#include "audio/devices/SoundServer.h"
#include "audio/files/AudioImporter.h"
#include "audio/playback/PlaybackController.h"
#include "controller/casting/PresetEditing.h"
#include "controller/commands/CommandTable.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/TakeEditing.h"
#include "shell/controls/RememberedFolder.h"
#include "shell/editor/row/LineRow.h"
#include "shell/theme/Icon.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

DirectionCommands::DirectionCommands(controller::ProjectSession &session, QObject *parent)
    : QObject(parent), m_controller(session.controller()), m_playback(session.playback()),
      m_recordings(session.recordings()), m_defaults(session.services().defaults),
      m_microphone(session.services().sound.microphone()) {
    connect(&m_microphone, &audio::SharedMicrophone::isInUseChanged, this, &DirectionCommands::withdrawRefusal);
}

bool DirectionCommands::mayPlay() {
    // The microphone would pick up the playback, also that of another window.
    const bool mayPlay = !m_microphone.isInUse();
    if (!mayPlay)
        m_controller.notices().post(
            {controller::Notice::Kind::PlayingRefused, u"Stop the recording before playing."_s});
    return mayPlay;
}

void DirectionCommands::withdrawRefusal() {
    if (!m_microphone.isInUse())
        m_controller.notices().withdraw(controller::Notice::Kind::PlayingRefused);
}

void DirectionCommands::connectRow(LineRow *row) {
    connect(row, &LineRow::filesDropped, this,
            [this, row](const QList<QUrl> &files) { importFiles(files, row->lineId()); });
    connect(row, &LineRow::notesEdited, this,
            [this, row](const QString &notes) { m_controller.lines().setNotes(row->lineId(), notes); });
    connect(row, &LineRow::notesEntered, this, [this, row] {
        controller::Selection &selection = m_controller.selection();
        if (!selection.selectedLineIds().contains(row->lineId()))
            selection.selectAlone(row->lineId());
    });
}

const QList<CommandId> &DirectionCommands::ids() {
    static const QList<CommandId> commands{
        CommandId::Record,          CommandId::PlayDirection,       CommandId::ImportDirection,
        CommandId::DeleteDirection, CommandId::SwitchDirectionMode, CommandId::EditNotes};
    return commands;
}

void DirectionCommands::carryOut(CommandId command, const model::LineId &id, QWidget *parent) {
    if (m_controller.lines().find(id) == nullptr)
        return;
    if (command == CommandId::Record)
        toggleRecording(id);
    else if (command == CommandId::PlayDirection)
        togglePlayback(id);
    else if (command == CommandId::ImportDirection)
        chooseFile(id, parent);
    else if (command == CommandId::DeleteDirection)
        deleteAudio(id);
    else if (command == CommandId::SwitchDirectionMode)
        switchMode(id);
    else if (command == CommandId::EditNotes)
        Q_EMIT notesRequested(id);
}

void DirectionCommands::toggleRecording(const model::LineId &id) {
    if (m_recordings.state(id).isRecording)
        return m_recordings.stop(id);
    // The microphone would pick up the playback.
    if (m_playback.isPlaying())
        m_playback.stop(audio::PlayheadReset::Reset);
    m_recordings.start(id);
}

QUrl DirectionCommands::audioURL(const model::LineId &id) const {
    return m_controller.runtime().state(id).directionAudioURL;
}

void DirectionCommands::togglePlayback(const model::LineId &id) {
    if (m_playback.isPlayingSource(id))
        m_playback.stop(audio::PlayheadReset::Reset);
    else if (const QUrl url = audioURL(id); !url.isEmpty() && showsDirection(id) && mayPlay())
        m_playback.playSource({id, url});
}

void DirectionCommands::seek(const model::LineId &id, double fraction) {
    if (const QUrl url = audioURL(id); !url.isEmpty() && mayPlay())
        m_playback.seekSource({id, url}, fraction);
}

void DirectionCommands::chooseFile(const model::LineId &id, QWidget *parent) {
    QStringList patterns;
    const QStringList extensions = audio::AudioImporter::panelExtensions();
    for (const QString &extension : extensions)
        patterns.append(QStringLiteral("*.") + extension);
    // The window is the parent: the row may show another line while the panel is open.
    auto *panel = new QFileDialog(parent->window(), QStringLiteral("Import Direction Audio"));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setNameFilter(QStringLiteral("Audio files (%1)").arg(patterns.join(QLatin1Char(' '))));
    panel->setLabelText(QFileDialog::Accept, QStringLiteral("Import"));
    rememberFolder(*panel, m_defaults, base::DialogFolder::Import);
    connect(panel, &QFileDialog::fileSelected, this, [this, id](const QString &path) {
        m_controller.directionAudio().importDirectionAudio(QUrl::fromLocalFile(path), id);
    });
    panel->open();
}

void DirectionCommands::importFiles(const QList<QUrl> &files, const model::LineId &id) {
    // A line has one direction, and we can't tell which of several files was meant.
    if (files.size() > 1)
        m_controller.notices().post(
            {controller::Notice::Kind::SeveralFilesDropped, u"Drop one audio file at a time on a line."_s});
    else if (!files.isEmpty())
        m_controller.directionAudio().importDroppedFile(files.first(), id);
}

void DirectionCommands::deleteAudio(const model::LineId &id) {
    if (!showsDirection(id))
        return;
    if (m_playback.isCurrentSource(id))
        m_playback.stop(audio::PlayheadReset::Reset);
    m_controller.takes().deleteDirectionAudio(id);
}

bool DirectionCommands::isVoiceDirected(const model::LineId &id) const {
    const model::ProjectLine *line = m_controller.lines().find(id);
    return line != nullptr &&
           m_controller.project().effectiveSettings(*line).directionMode == model::DirectionMode::Voice;
}

bool DirectionCommands::showsDirection(const model::LineId &id) const {
    const controller::DirectionRecordings::State recording = m_recordings.state(id);
    return isVoiceDirected(id) || recording.isRecording || !recording.error.isEmpty();
}

void DirectionCommands::switchMode(const model::LineId &id) {
    controller::ProjectController &project = m_controller;
    const auto mode = isVoiceDirected(id) ? model::DirectionMode::Text : model::DirectionMode::Voice;
    // If the line is selected, change the whole selection, as with all settings.
    QList<model::LineId> lines{id};
    if (project.selection().selectedLineIds().contains(id))
        lines = project.selection().selectedLinesInScript();
    QHash<model::LineId, model::ProjectLineSettings> settings;
    for (const model::LineId &each : std::as_const(lines)) {
        model::ProjectLineSettings own = project.project().effectiveSettings(*project.lines().find(each));
        own.directionMode = mode;
        settings.insert(each, own);
    }
    project.presets().updateSettings(settings);
}

DirectionCommands::CommandState DirectionCommands::stateOf(CommandId command,
                                                           const std::optional<model::LineId> &id) const {
    const bool hasLine = id && m_controller.lines().find(*id) != nullptr;
    const bool needsAudio = command == CommandId::PlayDirection || command == CommandId::DeleteDirection;
    CommandState state{controller::CommandTable::command(command).title, hasLine};
    if (!hasLine)
        return state;
    if (needsAudio)
        state.isEnabled = !audioURL(*id).isEmpty() && showsDirection(*id);
    if (command == CommandId::Record && m_recordings.state(*id).isRecording)
        state.title = u"Stop Recording"_s;
    else if (command == CommandId::PlayDirection && m_playback.isPlayingSource(*id))
        state.title = u"Stop Direction"_s;
    else if (command == CommandId::SwitchDirectionMode && isVoiceDirected(*id))
        state.title = u"Direct by Text"_s;
    return state;
}

void DirectionCommands::addToMenu(QMenu &menu, const model::LineId &id, QWidget *parent) {
    for (const CommandId command : ids()) {
        const CommandState state = stateOf(command, id);
        addCommand(menu, command, state.title, [this, command, id, parent] {
            carryOut(command, id, parent);
        })->setEnabled(state.isEnabled);
    }
}

} // namespace orlenta::shell
