#include "controller/takes/TakeEditing.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

#include "controller/document/Edit.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/takes/AudioInstaller.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "model/RecordSearch.h"
#include "tags/CharacterCount.h"
#include "tags/ClipNames.h"

namespace orlenta::controller {
namespace {

QString takeFileName(const QString &clipName, qsizetype number) {
    const QString suffix = QUuid::createUuid().toString(QUuid::WithoutBraces).left(4).toLower();
    return QStringLiteral("%1 - take %2 - %3.wav").arg(clipName, QString::number(number), suffix);
}

} // namespace

QString TakeEditing::clipName(const model::ProjectLine &line) const {
    return tags::clipName(m_controller.project(), line);
}

QString TakeEditing::continuousClipName(const QList<model::LineId> &lines) const {
    const model::ProjectTab *tab = m_controller.activeTab();
    return tags::continuousClipName(tab != nullptr ? tab->name : QStringLiteral("Script"), m_controller.scriptLineIds(),
                                    lines);
}

std::optional<GenerationRequestContext> TakeEditing::generationContext(const model::ProjectLine &line) const {
    if (!line.voiceId)
        return std::nullopt;
    return GenerationRequestContext{*line.voiceId, line.presetId, m_controller.project().effectiveSettings(line),
                                    tags::characterCount(line.text), clipName(line)};
}

qsizetype TakeEditing::indexInUse(const model::ProjectLine &line) const {
    const bool isUsed = line.activeTakeId || m_controller.runtime().hasGeneratedAudio(line.lineId);
    const model::Take *take = isUsed ? line.activeTake() : nullptr;
    return take == nullptr ? -1 : std::distance(line.takes.constData(), take);
}

void TakeEditing::setGenerating(GenerationState state, const model::LineId &id) {
    const Edit edit(m_controller);
    edit.updateRuntime(
        id, [state](LineRuntimeState &runtime) { runtime.isGenerating = state == GenerationState::Generating; });
}

QCoro::Task<std::optional<ProjectControllerError>>
TakeEditing::installGeneratedAudio(QString path, model::LineId id, std::optional<GenerationRequestContext> context) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr)
        co_return std::nullopt;
    const QString name = takeFileName(context ? context->clipName : clipName(*line), line->takes.size() + 1);
    const QPointer<ProjectController> controller(&m_controller);
    const auto stored = co_await controller->audioInstaller().install(path, name, AudioKind::Generated);
    if (!controller)
        co_return std::nullopt;
    if (!stored) {
        controller->setSpotError(QStringLiteral("Audio import failed: %1").arg(stored.error().description()));
        co_return stored.error();
    }
    if (controller->state().findLine(id) != nullptr)
        adopt(stored.value(), id, context);
    else if (stored.value() != path)
        QFile::remove(stored.value());
    co_return std::nullopt;
}

void TakeEditing::adopt(const QString &path, const model::LineId &id,
                        const std::optional<GenerationRequestContext> &context) {
    const model::ProjectLine line = *m_controller.state().findLine(id);
    const Edit edit(m_controller, line.takes.isEmpty() ? QStringLiteral("Generate") : QStringLiteral("Regenerate"));
    const model::Take take = newTake(QFileInfo(path).fileName(), line, context);
    edit.updateLine(id, [&take](model::ProjectLine &changed) {
        changed.takes.append(take);
        changed.activeTakeId = take.id;
    });
    useGeneratedFile(edit, id, QUrl::fromLocalFile(path));
}

void TakeEditing::switchTake(const model::LineId &id, const model::TakeId &takeId) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr || line->activeTakeId == takeId)
        return;
    const model::Take *take = model::findRecord(line->takes, takeId);
    if (take == nullptr)
        return;
    const QUrl file = m_controller.media().existingTakeURL(*take);
    const Edit edit(m_controller, QStringLiteral("Switch Take"));
    edit.updateLine(id, [&takeId](model::ProjectLine &changed) { changed.activeTakeId = takeId; });
    useGeneratedFile(edit, id, file);
}

void TakeEditing::deleteGeneratedAudio(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr || line->activeTake() == nullptr)
        return;
    const model::TakeId takeId = line->activeTake()->id;
    const Edit edit(m_controller, QStringLiteral("Delete Generated Audio"));
    edit.updateLine(id, [&takeId](model::ProjectLine &changed) {
        changed.takes.removeIf([&takeId](const model::Take &take) { return take.id == takeId; });
        changed.activeTakeId.reset();
    });
    useGeneratedFile(edit, id, QUrl());
}

void TakeEditing::deleteDirectionAudio(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr || line->sourceRecordings.isEmpty())
        return;
    const Edit edit(m_controller, QStringLiteral("Delete Direction Audio"));
    // A line that names no recording uses its last one, so any that stayed would be back when the project is reopened.
    edit.updateLine(id, [](model::ProjectLine &changed) {
        changed.sourceRecordings.clear();
        changed.activeSourceId.reset();
    });
    edit.updateRuntime(id, [](LineRuntimeState &state) { state.directionAudioURL.clear(); });
    m_controller.waveforms().invalidate(edit, id, AudioKind::SourceRecording);
}

void TakeEditing::useGeneratedFile(const Edit &edit, const model::LineId &id, const QUrl &url) const {
    edit.updateRuntime(id, [&url](LineRuntimeState &state) { state.generatedAudioURL = url; });
    m_controller.waveforms().invalidate(edit, id, AudioKind::Generated);
}

model::Take TakeEditing::newTake(const QString &filename, const model::ProjectLine &line,
                                 const std::optional<GenerationRequestContext> &context) const {
    model::Take take;
    take.id = model::TakeId::create();
    take.filename = filename;
    take.generatedAt = m_controller.now();
    if (context) {
        take.voiceId = context->voiceId;
        take.presetId = context->presetId;
        take.settingsSnapshot = context->settings;
        take.characterCount = context->characterCount;
    } else {
        take.settingsSnapshot = m_controller.project().effectiveSettings(line);
    }
    return take;
}

} // namespace orlenta::controller
