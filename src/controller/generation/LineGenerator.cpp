#include "controller/generation/LineGenerator.h"

#include <algorithm>
#include <utility>

#include <QtCore/QFileInfo>

#include "base/LogCategories.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/generation/GenerationPlan.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/ServiceAddresses.h"
#include "speech/synthesis/AudioOutputPreferences.h"
#include "speech/synthesis/SpeechApi.h"
#include "speech/synthesis/TTSRequest.h"
#include "tags/TagParser.h"

namespace orlenta::controller {

LineGenerator::LineGenerator(ProjectController &controller, speech::ElevenLabsService &service,
                             base::UserDefaults &defaults, QObject *parent)
    : QObject(parent), m_controller(controller), m_service(service), m_defaults(defaults) {}

LineGenerator::~LineGenerator() = default;

void LineGenerator::dismissError() {
    m_generateErrorTitle = QStringLiteral("Generation Failed");
    if (std::exchange(m_generateError, std::nullopt))
        Q_EMIT generateErrorChanged();
}

void LineGenerator::enqueue(const QList<model::LineId> &lines, speech::LineGenerationQueue::Priority priority) {
    m_queue.enqueue(lines, priority, [this](const model::LineId &id) { return generate(id); });
}

void LineGenerator::generateSelectedLines() {
    if (const auto single = m_controller.selection().singleSelectedLineId())
        enqueue({*single}, speech::LineGenerationQueue::Priority::Prioritized);
    else
        enqueue(planForSelection(m_controller).lines, speech::LineGenerationQueue::Priority::Normal);
}

QCoro::Task<void> LineGenerator::generate(model::LineId id) {
    const std::optional<Job> job = begin(id);
    if (!job)
        co_return;
    const QPointer<LineGenerator> self(this);
    const Outcome outcome = co_await speak(*job);
    if (!self)
        co_return;
    if (!outcome)
        report(*job, outcome.error());
    else if (!outcome->isEmpty())
        co_await m_controller.takes().installGeneratedAudio(outcome.value(), id, job->context);
    if (!self)
        co_return;
    m_controller.takes().setGenerating(GenerationState::Idle, id);
}

std::optional<LineGenerator::Job> LineGenerator::begin(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    const model::ProjectVoice *voice = m_controller.voices().projectVoiceFor(id);
    if (line == nullptr || voice == nullptr || m_controller.runtime().state(id).isGenerating)
        return std::nullopt;
    Job job;
    job.lineId = id;
    job.text = line->text;
    job.elevenLabsVoiceId = voice->elevenLabsVoiceId;
    job.context = m_controller.takes().generationContext(*line);
    const model::ProjectLineSettings settings = m_controller.project().effectiveSettings(*line);
    job.settings = {speech::stabilityToSend(settings), settings.similarityBoost, settings.style, settings.speed};
    job.modelId = speech::serviceModelId(settings.model);
    const QString recording = m_controller.runtime().state(id).directionAudioURL.toLocalFile();
    if (settings.directionMode == model::DirectionMode::Voice && QFileInfo::exists(recording))
        job.directionPath = recording;
    m_controller.takes().setGenerating(GenerationState::Generating, id);
    return job;
}

// No coroutine itself: g++ 12 destroys the result twice when both arms of a conditional expression await.
QCoro::Task<LineGenerator::Outcome> LineGenerator::speak(const Job &job) {
    return job.directionPath.isEmpty() ? speakText(job) : speakRecording(job);
}

QCoro::Task<LineGenerator::Outcome> LineGenerator::speakRecording(Job job) {
    co_return co_await m_service.speech().speechToSpeech(job.directionPath, job.elevenLabsVoiceId,
                                                         speech::speechToSpeechModelId(), job.settings);
}

QCoro::Task<LineGenerator::Outcome> LineGenerator::speakText(Job job) {
    const QPointer<LineGenerator> self(this);
    const Dictionary dictionary = co_await currentDictionary(job.modelId);
    // The line may have been deleted while the dictionary was on its way.
    if (!self || m_controller.lines().find(job.lineId) == nullptr)
        co_return QString();
    const speech::TTSRequest request = ttsRequest(job, dictionary);
    const QByteArray body = request.toJson();
    const speech::AudioOutputPreferences preferences = speech::AudioOutputPreferences::read(m_defaults);
    const auto audio = co_await m_service.speech().requestAudioFile(
        speech::SpeechApi::textToSpeechPath(job.elevenLabsVoiceId), body, QStringLiteral("application/json"),
        QStringLiteral("tts"), m_service.apiKey(), preferences);
    if (audio && self)
        m_service.scheduleUsageRefresh(QStringLiteral("text-to-speech"),
                                       speech::estimatedCharacters(request.text, job.modelId),
                                       speech::ElevenLabsService::UsageEstimate::Apply);
    co_return audio;
}

QCoro::Task<LineGenerator::Dictionary> LineGenerator::currentDictionary(QString modelId) {
    if (!modelId.contains(QLatin1String("v3")))
        co_return Dictionary();
    const QPointer<LineGenerator> self(this);
    if (m_controller.pronunciations().pronunciationDirty()) {
        const auto uploaded = co_await m_controller.pronunciations().uploadPronunciationDictionary(m_service);
        if (!self)
            co_return Dictionary();
        if (!uploaded) {
            qCWarning(base::log::project, "[Pronunciation] Dictionary upload failed, using local replacement: %s",
                      qUtf8Printable(uploaded.error().description()));
            co_return Dictionary();
        }
    }
    Dictionary dictionary;
    dictionary.id = m_controller.pronunciations().pronunciationDictionaryId();
    dictionary.versionId = m_controller.pronunciations().pronunciationDictionaryVersionId();
    co_return dictionary;
}

speech::TTSRequest LineGenerator::ttsRequest(const Job &job, const Dictionary &dictionary) const {
    const Pronunciations &words = m_controller.pronunciations();
    const bool isV3 = job.modelId.contains(QLatin1String("v3"));
    speech::TTSRequest request;
    request.modelId = job.modelId;
    request.text = dictionary.id ? job.text : words.applyingLocalPronunciation(job.text);
    request.pronunciationDictionaryLocators = speech::dictionaryLocators(dictionary.id, dictionary.versionId);
    if (!isV3) {
        // Only the v3 model understands tags; the others would speak them.
        request.text = tags::strippingTags(request.text);
        if (const auto previous = previousLineText(job.lineId))
            request.previousText = tags::strippingTags(words.applyingLocalPronunciation(*previous));
    }
    if (job.modelId == QLatin1String("eleven_v3"))
        request.v3VoiceSettings = {job.settings.stability, job.settings.similarityBoost, job.settings.style};
    else
        request.voiceSettings = job.settings;
    return request;
}

std::optional<QString> LineGenerator::previousLineText(const model::LineId &id) const {
    for (const model::ProjectTab &tab : m_controller.project().tabs) {
        const qsizetype index = tab.lineIds.indexOf(id);
        if (index < 0)
            continue;
        const model::ProjectLine *previous = index > 0 ? m_controller.lines().find(tab.lineIds.at(index - 1)) : nullptr;
        return previous != nullptr ? std::optional(previous->text) : std::nullopt;
    }
    return std::nullopt;
}

void LineGenerator::report(const Job &job, const speech::SpeechError &error) {
    if (error.isCancelled())
        return;
    qCWarning(base::log::project, "[%s] Generation failed for line %s: %s", job.directionPath.isEmpty() ? "TTS" : "STS",
              qUtf8Printable(job.lineId.text()), qUtf8Printable(error.description()));
    if (error.isRateLimited()) {
        m_generateErrorTitle = QStringLiteral("ElevenLabs is busy right now");
        m_generateError =
            QStringLiteral(
                "Generation was rate-limited by ElevenLabs. Please wait a moment and try again. If this keeps "
                "happening, your account may be hitting concurrency limits. Check your plan at %1.")
                .arg(speech::planAddress());
    } else {
        m_generateErrorTitle = QStringLiteral("Generation Failed");
        m_generateError = error.description();
    }
    Q_EMIT generateErrorChanged();
}

} // namespace orlenta::controller
