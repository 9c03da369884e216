#include "controller/ProjectController.h"

#include <utility>

#include "controller/casting/CastPalette.h"
#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/document/Edit.h"
#include "controller/document/Notices.h"
#include "controller/document/ProjectRepair.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/export/Exporting.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineClipboard.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/script/TagEditing.h"
#include "controller/takes/AudioInstaller.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "model/ProjectStore.h"

namespace orlenta::controller {

struct ProjectController::Subjects {
    explicit Subjects(ProjectController &controller)
        : typing(controller), selection(controller), runtime(controller), media(controller), waveforms(controller),
          installer(controller), voices(controller), presets(controller, controller.m_clock), lines(controller),
          clipboard(controller), tabs(controller), tagEditing(controller), takes(controller),
          directionAudio(controller), pronunciations(controller), exporting(controller) {}

    UndoManager undoManager;
    Notices notices;
    TypingSession typing;
    Selection selection;
    LineRuntime runtime;
    MediaFiles media;
    LineWaveforms waveforms;
    AudioInstaller installer;
    VoiceCasting voices;
    PresetEditing presets;
    LineEditing lines;
    LineClipboard clipboard;
    TabEditing tabs;
    TagEditing tagEditing;
    TakeEditing takes;
    DirectionAudio directionAudio;
    Pronunciations pronunciations;
    Exporting exporting;
};

ProjectController::ProjectController(model::Project project, const QUrl &projectURL, base::Clock clock, QObject *parent)
    : QObject(parent), m_clock(std::move(clock)) {
    m_state.project = repairedProject(std::move(project));
    m_state.projectURL = projectURL;
    const auto voiceCount = static_cast<int>(m_state.project.voices.size());
    const int nextColor = voiceCount % static_cast<int>(castPalette().size());
    m_state.nextColorIndex = nextColor == 0 ? 1 : nextColor;
    m_subjects = std::make_unique<Subjects>(*this);
    const Edit edit(*this);
    selection().normalise(edit, std::nullopt, Selection::AutoSelect::On);
    media().rebuildRuntimeAudio(edit);
}

ProjectController::ProjectController(const model::StoredProject &stored, base::Clock clock, QObject *parent)
    : ProjectController(stored.project, QUrl::fromLocalFile(stored.folder), std::move(clock), parent) {
    m_projectFile = stored.file;
}

ProjectController::~ProjectController() = default;

base::Result<void, ProjectControllerError> ProjectController::save() {
    if (m_state.folder().isEmpty())
        return base::fail(ProjectControllerError(ProjectControllerError::ProjectNotBacked()));
    const auto saved = model::ProjectStore::save({m_state.project, m_state.folder(), m_projectFile}, now());
    if (!saved)
        return base::fail(ProjectControllerError(saved.error()));
    m_projectFile = saved->file;
    const Edit edit(*this);
    edit->project.modifiedAt = saved->project.modifiedAt;
    edit->hasUnsavedChanges = false;
    return {};
}

void ProjectController::discardChanges() {
    const Edit edit(*this);
    edit->hasUnsavedChanges = false;
}

void ProjectController::setSpotError(const QString &message) {
    if (message.isEmpty())
        notices().withdraw(Notice::Kind::SpotError);
    else
        notices().post({Notice::Kind::SpotError, message});
}

QString ProjectController::spotError() const {
    const auto notice = notices().find(Notice::Kind::SpotError);
    return notice ? notice->text : QString();
}

UndoManager &ProjectController::undoManager() const {
    return m_subjects->undoManager;
}

Selection &ProjectController::selection() const {
    return m_subjects->selection;
}

TypingSession &ProjectController::typing() const {
    return m_subjects->typing;
}

LineEditing &ProjectController::lines() const {
    return m_subjects->lines;
}

LineClipboard &ProjectController::clipboard() const {
    return m_subjects->clipboard;
}

TabEditing &ProjectController::tabs() const {
    return m_subjects->tabs;
}

TagEditing &ProjectController::tagEditing() const {
    return m_subjects->tagEditing;
}

TakeEditing &ProjectController::takes() const {
    return m_subjects->takes;
}

DirectionAudio &ProjectController::directionAudio() const {
    return m_subjects->directionAudio;
}

AudioInstaller &ProjectController::audioInstaller() const {
    return m_subjects->installer;
}

MediaFiles &ProjectController::media() const {
    return m_subjects->media;
}

LineRuntime &ProjectController::runtime() const {
    return m_subjects->runtime;
}

LineWaveforms &ProjectController::waveforms() const {
    return m_subjects->waveforms;
}

VoiceCasting &ProjectController::voices() const {
    return m_subjects->voices;
}

PresetEditing &ProjectController::presets() const {
    return m_subjects->presets;
}

Pronunciations &ProjectController::pronunciations() const {
    return m_subjects->pronunciations;
}

Exporting &ProjectController::exporting() const {
    return m_subjects->exporting;
}

Notices &ProjectController::notices() const {
    return m_subjects->notices;
}

} // namespace orlenta::controller
