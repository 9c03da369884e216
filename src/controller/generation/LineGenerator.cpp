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
#include "speech/synthesis/SpeechApi.h"
#include "speech/synthesis/SpeechModel.h"
#include "speech/synthesis/TTSRequest.h"
#include "tags/TagParser.h"

namespace orlenta::controller {

LineGenerator::LineGenerator(ProjectController &controller, speech::ElevenLabsService &service, QObject *parent)
    : QObject(parent), m_controller(controller), m_service(service) {}

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
    std::optional<Job> job = begin(id);
    if (!job)
        co_return;
    const QPointer<LineGenerator> self(this);
    const Outcome outcome = co_await speak(*job);
    if (!self)
        co_return;
    if (!outcome)
        report(*job, outcome.error());
    else if (*outcome) {
        const speech::GeneratedAudio audio = **outcome;
        co_await install(audio, *job);
    }
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
    job.access = m_service.access();
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
    m_controller.takes().setGenerating(GenerationState::Generating, id);
    return job;
}

// No coroutine itself: g++ 12 destroys the result twice when both arms of a conditional expression await.
QCoro::Task<LineGenerator::Outcome> LineGenerator::speak(const Job &job) {
    return job.directionPath.isEmpty() ? speakText(job) : speakRecording(job);
}

QCoro::Task<LineGenerator::Outcome> LineGenerator::speakRecording(Job job) {
    const auto audio =
        co_await m_service.speech().speechToSpeech(job.access, job.directionPath, job.elevenLabsVoiceId, job.settings);
    if (!audio)
        co_return base::fail(audio.error());
    co_return std::optional(*audio);
}

QCoro::Task<LineGenerator::Outcome> LineGenerator::speakText(Job job) {
    const QPointer<LineGenerator> self(this);
    const Dictionary dictionary = co_await currentDictionary(job);
    // The line may have been deleted while the dictionary was on its way.
    if (!self || m_controller.lines().find(job.lineId) == nullptr)
        co_return std::optional<speech::GeneratedAudio>();
    const speech::TTSRequest request = ttsRequest(job, dictionary);
    const auto audio = co_await m_service.speech().textToSpeech(job.access, job.elevenLabsVoiceId, request);
    if (!audio)
        co_return base::fail(audio.error());
    co_return std::optional(*audio);
}

QCoro::Task<void> LineGenerator::install(speech::GeneratedAudio audio, Job job) {
    // From here on the file is the take's, or stays where it is if the line has gone.
    audio.keep();
    co_await m_controller.takes().installGeneratedAudio(audio.path(), job.lineId, job.context);
}

QCoro::Task<LineGenerator::Dictionary> LineGenerator::currentDictionary(Job job) {
    if (!job.model->takesDictionary)
        co_return Dictionary();
    const QPointer<LineGenerator> self(this);
    if (m_controller.pronunciations().pronunciationDirty()) {
        const auto uploaded =
            co_await m_controller.pronunciations().uploadPronunciationDictionary(m_service.speech(), job.access);
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
    speech::TTSRequest request;
    request.modelId = job.model->id;
    request.text = dictionary.id ? job.text : words.applyingLocalPronunciation(job.text);
    request.pronunciationDictionaryLocators = speech::dictionaryLocators(dictionary.id, dictionary.versionId);
    if (const auto previous = job.model->takesPreviousText ? previousLineText(job.lineId) : std::nullopt)
        request.previousText = words.applyingLocalPronunciation(*previous);
    if (!job.model->understandsTags) {
        request.text = tags::strippingTags(request.text);
        if (request.previousText)
            request.previousText = tags::strippingTags(*request.previousText);
    }
    request.setVoiceSettings(job.settings);
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
