#include "controller/takes/TakeEditing.h"

#include <algorithm>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/PrivateFolders.h"
#include "controller/document/UndoHistory.h"
#include "controller/FileCopy.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "tags/CharacterCount.h"
#include "tags/ClipNames.h"

namespace orlenta::controller {
namespace {

QString freePath(const QString &folder, const QString &suggestedName) {
    QString name = QFileInfo(suggestedName).fileName();
    if (name.isEmpty())
        name = QStringLiteral("audio.wav");
    const QString stem = QFileInfo(name).completeBaseName();
    const QString extension = QFileInfo(name).suffix();
    QString path = folder + u'/' + name;
    for (int number = 1; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number)
        path = QStringLiteral("%1/%2-%3.%4").arg(folder, stem).arg(number).arg(extension);
    return path;
}

bool liesDirectlyInCaches(const QString &path) {
    return QFileInfo(path).absolutePath() == QDir::cleanPath(base::PrivateFolders::caches());
}

QString takeFileName(const QString &clipName, qsizetype number) {
    const QString suffix = QUuid::createUuid().toString(QUuid::WithoutBraces).left(4).toLower();
    return QStringLiteral("%1 - take %2 - %3.wav").arg(clipName, QString::number(number), suffix);
}

} // namespace

QString TakeEditing::clipName(const model::ProjectLine &line) const {
    return tags::clipName(m_parts.document.project(), line);
}

QString TakeEditing::continuousClipName(const QList<model::LineId> &lines) const {
    const model::ProjectTab *tab = m_parts.document.activeTab();
    return tags::continuousClipName(tab != nullptr ? tab->name : QStringLiteral("Script"),
                                    m_parts.document.scriptLineIds(), lines);
}

std::optional<GenerationRequestContext> TakeEditing::generationContext(const model::ProjectLine &line) const {
    if (!line.voiceId)
        return std::nullopt;
    return GenerationRequestContext{*line.voiceId, line.presetId, m_parts.document.project().effectiveSettings(line),
                                    tags::characterCount(line.text), clipName(line)};
}

void TakeEditing::setGenerating(GenerationState state, const model::LineId &id) {
    m_parts.runtime.update(
        id, [&](LineRuntimeState &runtime) { runtime.isGenerating = state == GenerationState::Generating; }, EditKey());
}

void TakeEditing::installGeneratedAudio(const QString &path, const model::LineId &id,
                                        const std::optional<GenerationRequestContext> &context) {
    Document &document = m_parts.document;
    if (document.findLine(id) == nullptr)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    const model::ProjectLine line = *document.findLine(id);
    QString stored = path;
    if (!document.folder().isEmpty()) {
        const QString name = context ? context->clipName : clipName(line);
        const auto copied = storeAudio(path, takeFileName(name, line.takes.size() + 1));
        if (!copied) {
            document.setSpotError(QStringLiteral("Audio import failed: %1").arg(copied.error().description()));
            return;
        }
        stored = copied.value();
    }
    useGeneratedFile(id, QUrl::fromLocalFile(stored));
    const model::Take take = newTake(QFileInfo(stored).fileName(), line, context);
    document.updateLine(
        id,
        [&](model::ProjectLine &changed) {
            changed.takes.append(take);
            changed.activeTakeId = take.id;
        },
        EditKey());
    m_parts.history.registerUndo(before,
                                 line.takes.isEmpty() ? QStringLiteral("Generate") : QStringLiteral("Regenerate"));
}

void TakeEditing::switchTake(const model::LineId &id, const model::TakeId &takeId) {
    Document &document = m_parts.document;
    const model::ProjectLine *line = document.findLine(id);
    if (line == nullptr || line->activeTakeId == takeId)
        return;
    const auto take = std::find_if(line->takes.begin(), line->takes.end(),
                                   [&](const model::Take &candidate) { return candidate.id == takeId; });
    if (take == line->takes.end())
        return;
    const QUrl file = m_parts.media.existingTakeURL(*take);
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    document.updateLine(
        id, [&](model::ProjectLine &changed) { changed.activeTakeId = takeId; }, EditKey());
    useGeneratedFile(id, file);
    m_parts.history.registerUndo(before, QStringLiteral("Switch Take"));
}

void TakeEditing::deleteGeneratedAudio(const model::LineId &id) {
    Document &document = m_parts.document;
    const model::ProjectLine *line = document.findLine(id);
    if (line == nullptr || line->activeTake() == nullptr)
        return;
    const model::TakeId takeId = line->activeTake()->id;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    document.updateLine(
        id,
        [&](model::ProjectLine &changed) {
            changed.takes.removeIf([&](const model::Take &take) { return take.id == takeId; });
            changed.activeTakeId.reset();
        },
        EditKey());
    useGeneratedFile(id, QUrl());
    m_parts.history.registerUndo(before, QStringLiteral("Delete Generated Audio"));
}

void TakeEditing::deleteDirectionAudio(const model::LineId &id) {
    Document &document = m_parts.document;
    const model::ProjectLine *line = document.findLine(id);
    if (line == nullptr || (!line->activeSourceId && m_parts.runtime.state(id).directionAudioURL.isEmpty()))
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    document.updateLine(
        id, [](model::ProjectLine &changed) { changed.activeSourceId.reset(); }, EditKey());
    m_parts.runtime.update(
        id, [](LineRuntimeState &state) { state.directionAudioURL.clear(); }, EditKey());
    m_parts.waveforms.invalidate(id, WaveformKind::SourceRecording, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Delete Direction Audio"));
}

void TakeEditing::useGeneratedFile(const model::LineId &id, const QUrl &url) {
    m_parts.runtime.update(
        id, [&](LineRuntimeState &state) { state.generatedAudioURL = url; }, EditKey());
    m_parts.waveforms.invalidate(id, WaveformKind::Generated, EditKey());
}

base::Result<QString, ProjectControllerError> TakeEditing::storeAudio(const QString &path, const QString &name) {
    const auto folder = m_parts.media.audioFolder(AudioKind::Generated);
    if (!folder)
        return base::fail(folder.error());
    if (!QFileInfo::exists(path))
        return base::fail(
            ProjectControllerError(ProjectControllerError::AudioSourceMissing{QUrl::fromLocalFile(path)}));
    const QString destination = freePath(folder.value(), name);
    if (const auto copied = copyFile(path, destination); !copied)
        return base::fail(ProjectControllerError(copied.error()));
    if (liesDirectlyInCaches(path))
        QFile::remove(path);
    return destination;
}

model::Take TakeEditing::newTake(const QString &filename, const model::ProjectLine &line,
                                 const std::optional<GenerationRequestContext> &context) const {
    model::Take take;
    take.id = model::TakeId::create();
    take.filename = filename;
    take.generatedAt = m_parts.document.now();
    if (context) {
        take.voiceId = context->voiceId;
        take.presetId = context->presetId;
        take.settingsSnapshot = context->settings;
        take.characterCount = context->characterCount;
    } else {
        take.settingsSnapshot = m_parts.document.project().effectiveSettings(line);
    }
    return take;
}

} // namespace orlenta::controller
