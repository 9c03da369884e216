#include "controller/generation/LineGenerator.h"

#include <algorithm>
#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFileInfo>

#include "base/LogCategories.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/generation/GenerationPlan.h"
#include "controller/generation/TakeStorage.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/ServiceAddresses.h"
#include "speech/synthesis/SpeechModel.h"
#include "speech/synthesis/TTSRequest.h"
#include "tags/TagParser.h"

namespace orlenta::controller {

using speech::LineGenerationQueue;

namespace {

// Slow speech takes a tenth of a second per character, which is 14 kB in the largest output format.
constexpr qint64 bytesPerCharacter = qint64{16} * 1024;
constexpr qint64 smallestRoom = qint64{16} * 1024 * 1024;

/// A generous estimate of the take's size.
qint64 expectedBytes(const LineJob &job) {
    const qint64 speech =
        job.isSpeechToSpeech() ? 4 * QFileInfo(job.directionPath).size() : job.text.size() * bytesPerCharacter;
    return smallestRoom + speech;
}

bool saysNothing(const QString &text) {
    return text.trimmed().isEmpty();
}

} // namespace

LineGenerator::LineGenerator(ProjectController &controller, speech::ElevenLabsService &service, QObject *parent)
    : QObject(parent), m_controller(controller), m_service(service), m_speaker(controller, service.speech()),
      m_unstored(controller) {
    connect(&m_queue, &LineGenerationQueue::isActiveChanged, this, [this] {
        if (m_queue.isActive())
            return;
        m_batchLines.clear();
        m_batchTakes.clear();
        tellSkipped();
    });
}

LineGenerator::~LineGenerator() = default;

void LineGenerator::dismissError() {
    m_generateErrorTitle = QStringLiteral("Generation Failed");
    if (std::exchange(m_generateError, std::nullopt))
        Q_EMIT generateErrorChanged();
}

void LineGenerator::enqueue(const QList<model::LineId> &lines, LineGenerationQueue::Priority priority) {
    const Origin origin = priority == LineGenerationQueue::Priority::Normal ? Origin::Batch : Origin::Line;
    const Order order{m_service.access(), origin};
    if (order.access.apiKey.isEmpty()) {
        if (std::any_of(lines.cbegin(), lines.cend(),
                        [this](const model::LineId &id) { return canGenerate(m_controller, id); }))
            setError(QStringLiteral("Generation Failed"), speech::SpeechError::notConnected().description(),
                     Remedy::Connect);
        return;
    }
    const QList<model::LineId> wanted = origin == Origin::Batch ? withoutRepeats(lines) : lines;
    if (origin == Origin::Batch)
        m_batchLines.unite(QSet<model::LineId>(wanted.cbegin(), wanted.cend()));
    m_queue.enqueue(wanted, priority, [this, order](const model::LineId &id) { return perform(id, order); });
}

// On a second press of "Regenerate", every line has audio, old or new, so the new takes would be paid for twice. A
// selection of finished lines only is a deliberate new request.
QList<model::LineId> LineGenerator::withoutRepeats(const QList<model::LineId> &lines) const {
    const bool isRepeat = std::any_of(lines.cbegin(), lines.cend(), [this](const model::LineId &id) {
        return m_batchLines.contains(id) && m_queue.holds(id);
    });
    QList<model::LineId> wanted = lines;
    if (isRepeat)
        wanted.removeIf([this](const model::LineId &id) {
            return m_batchTakes.contains(id) && m_controller.runtime().hasGeneratedAudio(id);
        });
    return wanted;
}

void LineGenerator::generateSelectedLines() {
    if (const auto single = m_controller.selection().singleSelectedLineId())
        enqueue({*single}, LineGenerationQueue::Priority::Prioritized);
    else
        enqueue(planForSelection(m_controller).lines, LineGenerationQueue::Priority::Normal);
}

QCoro::Task<void> LineGenerator::generate(model::LineId id) {
    return perform(id, {m_service.access(), Origin::Line});
}

QCoro::Task<void> LineGenerator::perform(model::LineId id, Order order) {
    const QPointer<LineGenerator> self(this);
    if (const std::optional<LineJob> job = begin(id, order)) {
        co_await generateJob(*job, order.origin);
        if (!self)
            co_return;
        m_controller.takes().setGenerating(GenerationState::Idle, id);
    }
    // For a batch, the message comes at its end.
    if (!m_queue.isActive())
        tellSkipped();
}

std::optional<LineJob> LineGenerator::begin(const model::LineId &id, const Order &order) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    const model::ProjectVoice *voice = m_controller.voices().projectVoiceFor(id);
    if (line == nullptr || voice == nullptr || m_controller.runtime().state(id).isGenerating)
        return std::nullopt;
    if (order.access != m_service.access()) {
        skip(SkipReason::AccountGone);
        return std::nullopt;
    }
    LineJob job;
    job.access = order.access;
    job.lineId = id;
    job.text = line->text;
    job.elevenLabsVoiceId = voice->elevenLabsVoiceId;
    job.context = m_controller.takes().generationContext(*line);
    const model::ProjectLineSettings settings = m_controller.project().effectiveSettings(*line);
    job.settings = {speech::stabilityToSend(settings), settings.similarityBoost, settings.style, settings.speed};
    job.model = &speech::SpeechModel::forKey(settings.model);
    const QString recording = m_controller.runtime().state(id).directionAudioURL.toLocalFile();
    if (settings.directionMode == model::DirectionMode::Voice && QFileInfo::exists(recording))
        job.directionPath = recording;
    // A model that understands tags may turn "[laughs]" into a laugh, so a single line of tags can be generated.
    const bool tagsCount = order.origin == Origin::Line && job.model->understandsTags;
    if (!job.isSpeechToSpeech() && saysNothing(tagsCount ? job.text : tags::strippingTags(job.text)))
        return std::nullopt;
    m_controller.takes().setGenerating(GenerationState::Generating, id);
    return job;
}

QCoro::Task<void> LineGenerator::generateJob(LineJob job, Origin origin) {
    const QPointer<LineGenerator> self(this);
    QFuture<std::optional<SkipReason>> checking =
        QtConcurrent::run(takeStorageProblem, m_controller.projectURL().toLocalFile(), expectedBytes(job));
    const std::optional<SkipReason> problem = co_await checking;
    if (!self || m_controller.lines().find(job.lineId) == nullptr)
        co_return;
    if (problem) {
        skip(*problem);
        co_return;
    }
    const LineSpeaker::Outcome outcome = co_await m_speaker.speak(job);
    if (!self)
        co_return;
    if (!outcome) {
        const bool isTooLong = outcome.error().kind() == speech::SpeechError::Kind::TextTooLong;
        if (isTooLong && origin == Origin::Batch)
            skip(SkipReason::TextTooLong);
        else
            report(job, outcome.error());
        co_return;
    }
    if (!*outcome)
        co_return;
    if (origin == Origin::Batch)
        m_batchTakes.insert(job.lineId);
    const speech::GeneratedAudio audio = **outcome;
    co_await store(audio, job);
}

QCoro::Task<void> LineGenerator::store(speech::GeneratedAudio audio, LineJob job) {
    // From now on the file belongs to the take. If the line was deleted, it stays in the caches folder.
    audio.keep();
    const QPointer<LineGenerator> self(this);
    const auto problem = co_await m_controller.takes().installGeneratedAudio(audio.path(), job.lineId, job.context);
    if (!self || !problem)
        co_return;
    const UnstoredTakes::Entry entry{job.lineId, job.context, audio.path(), problem->description()};
    co_await m_unstored.keep(entry);
}

void LineGenerator::skip(SkipReason reason) {
    m_skipped.add(reason);
}

void LineGenerator::tellSkipped() {
    if (!m_skipped.isEmpty())
        setError(QStringLiteral("Generation Stopped"), m_skipped.takeMessage());
}

void LineGenerator::report(const LineJob &job, const speech::SpeechError &error) {
    if (error.isCancelled()) {
        if (job.access != m_service.access())
            skip(SkipReason::AccountGone);
        return;
    }
    qCWarning(base::log::project, "[%s] Generation failed for line %s: %s", job.isSpeechToSpeech() ? "STS" : "TTS",
              qUtf8Printable(job.lineId.text()), qUtf8Printable(error.description()));
    if (!error.isRateLimited()) {
        const bool isUnreachable = error.kind() == speech::SpeechError::Kind::Transport ||
                                   error.kind() == speech::SpeechError::Kind::NotConnected;
        setError(QStringLiteral("Generation Failed"), error.description(),
                 isUnreachable ? Remedy::Connect : Remedy::None);
        return;
    }
    setError(QStringLiteral("ElevenLabs is busy right now"),
             QStringLiteral("Generation was rate-limited by ElevenLabs. Please wait a moment and try again. If this "
                            "keeps happening, your account may be hitting concurrency limits. Check your plan at %1.")
                 .arg(speech::planAddress()));
}

void LineGenerator::setError(const QString &title, const QString &message, Remedy remedy) {
    m_generateErrorRemedy = remedy;
    m_generateErrorTitle = title;
    m_generateError = message;
    Q_EMIT generateErrorChanged();
}

} // namespace orlenta::controller
