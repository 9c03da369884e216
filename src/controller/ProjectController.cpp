#include "controller/ProjectController.h"

#include <utility>

#include "controller/casting/CastPalette.h"
#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/document/Document.h"
#include "controller/document/ProjectRepair.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoHistory.h"
#include "controller/document/UndoManager.h"
#include "controller/export/Exporting.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineClipboard.h"
#include "controller/script/LineEditing.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/script/TagEditing.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "model/ProjectStore.h"

namespace orlenta::controller {

/// Every subject after those it stands on; they go in the opposite order.
struct ProjectController::Subjects {
    Subjects(model::Project project, const QUrl &projectURL, base::Clock clock)
        : document(std::move(project), projectURL, std::move(clock)) {}

    Document document;
    UndoManager undoManager;
    TypingSession typing{document, undoManager};
    Selection selection{document, typing};
    LineRuntime runtime{document};
    MediaFiles media{document, runtime};
    LineWaveforms waveforms{document, runtime, media};
    ScriptStructure structure{document, typing, selection, runtime};
    UndoHistory history{{document, undoManager, typing, selection, structure, runtime, media}};
    VoiceCasting voices{document, history};
    PresetEditing presets{document, history, voices};
    LineEditing lines{{document, history, selection, structure, runtime, voices, presets}};
    LineClipboard clipboard{{document, history, selection, structure, runtime, lines}};
    TabEditing tabs{{document, history, selection, structure, runtime}};
    TagEditing tagEditing{document, history, selection};
    TakeEditing takes{{document, history, runtime, media, waveforms}};
    DirectionAudio directionAudio{{document, history, runtime, media, waveforms}};
    Pronunciations pronunciations{document, history};
    Exporting exporting{{document, selection, media, takes}};
};

ProjectController::ProjectController(model::Project project, const QUrl &projectURL, base::Clock clock, QObject *parent)
    : QObject(parent),
      m_subjects(std::make_unique<Subjects>(repairedProject(std::move(project)), projectURL, std::move(clock))) {
    Document &document = m_subjects->document;
    m_subjects->selection.normalise(std::nullopt, Selection::AutoSelect::On);
    const auto voiceCount = static_cast<int>(document.project().voices.size());
    const int nextColor = voiceCount % static_cast<int>(castPalette().size());
    document.setNextColorIndex(nextColor == 0 ? 1 : nextColor, EditKey());
    m_subjects->media.rebuildRuntimeAudio();
    connect(&document, &Document::projectChanged, this, &ProjectController::projectChanged);
    connect(&document, &Document::scriptLinesChanged, this, &ProjectController::scriptLinesChanged);
    connect(&document, &Document::tabsChanged, this, &ProjectController::tabsChanged);
    connect(&document, &Document::activeTabIdChanged, this, &ProjectController::activeTabIdChanged);
    connect(&document, &Document::hasUnsavedChangesChanged, this, &ProjectController::hasUnsavedChangesChanged);
    connect(&document, &Document::spotErrorChanged, this, &ProjectController::spotErrorChanged);
    connect(&document, &Document::typingFlushVersionChanged, this, &ProjectController::typingFlushVersionChanged);
}

ProjectController::~ProjectController() = default;

const model::Project &ProjectController::project() const {
    return m_subjects->document.project();
}

QUrl ProjectController::projectURL() const {
    return m_subjects->document.projectURL();
}

bool ProjectController::hasUnsavedChanges() const {
    return m_subjects->document.hasUnsavedChanges();
}

const model::ProjectTab *ProjectController::activeTab() const {
    return m_subjects->document.activeTab();
}

const QList<model::LineId> &ProjectController::scriptLineIds() const {
    return m_subjects->document.scriptLineIds();
}

QString ProjectController::spotError() const {
    return m_subjects->document.spotError();
}

void ProjectController::setSpotError(const QString &message) {
    m_subjects->document.setSpotError(message);
}

int ProjectController::typingFlushVersion() const {
    return m_subjects->document.typingFlushVersion();
}

base::Result<void, ProjectControllerError> ProjectController::save() {
    Document &document = m_subjects->document;
    if (document.folder().isEmpty())
        return base::fail(ProjectControllerError(ProjectControllerError::ProjectNotBacked()));
    const auto saved = model::ProjectStore::save(document.project(), document.folder(), document.now());
    if (!saved)
        return base::fail(ProjectControllerError(saved.error()));
    document.edit(EditKey()).modifiedAt = saved->modifiedAt;
    document.setClean(EditKey());
    return {};
}

void ProjectController::discardChanges() {
    m_subjects->document.setClean(EditKey());
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

} // namespace orlenta::controller
