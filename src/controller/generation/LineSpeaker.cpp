#include "controller/generation/LineSpeaker.h"

#include <QtCore/QPointer>

#include "base/LogCategories.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineEditing.h"
#include "speech/synthesis/SpeechApi.h"
#include "speech/synthesis/SpeechModel.h"
#include "tags/TagParser.h"

namespace orlenta::controller {
namespace {

/// Whether the service no longer has the requested dictionary.
bool missesDictionary(const speech::SpeechError &error) {
    const auto &refusal = error.service();
    return refusal && refusal->status() == 404 &&
           (refusal->code().contains(QLatin1String("dictionary")) ||
            refusal->text().contains(QLatin1String("dictionary"), Qt::CaseInsensitive));
}

LineSpeaker::Outcome outcomeOf(const speech::SpeechApi::AudioResult &audio) {
    if (!audio)
        return base::fail(audio.error());
    return std::optional(*audio);
}

} // namespace

LineSpeaker::LineSpeaker(ProjectController &controller, speech::SpeechApi &speech)
    : m_controller(controller), m_speech(speech) {}

// Not a coroutine itself: g++ 12 destroys the result twice when both arms of a conditional expression await.
QCoro::Task<LineSpeaker::Outcome> LineSpeaker::speak(const LineJob &job) {
    return job.isSpeechToSpeech() ? speakRecording(job) : speakText(job);
}

QCoro::Task<LineSpeaker::Outcome> LineSpeaker::speakRecording(LineJob job) {
    const auto audio =
        co_await m_speech.speechToSpeech(job.access, job.directionPath, job.elevenLabsVoiceId, job.settings);
    co_return outcomeOf(audio);
}

QCoro::Task<LineSpeaker::Outcome> LineSpeaker::speakText(LineJob job) {
    const QPointer<LineSpeaker> self(this);
    Dictionary dictionary = co_await currentDictionary(job);
    // The line may have been deleted during the upload.
    if (!self || m_controller.lines().find(job.lineId) == nullptr)
        co_return std::optional<speech::GeneratedAudio>();
    speech::TTSRequest request = ttsRequest(job, dictionary);
    auto audio = co_await m_speech.textToSpeech(job.access, job.elevenLabsVoiceId, request);
    if (audio || !self || !dictionary.id || !missesDictionary(audio.error()))
        co_return outcomeOf(audio);

    m_controller.pronunciations().forgetUploadedDictionary();
    dictionary = co_await currentDictionary(job);
    if (!self || m_controller.lines().find(job.lineId) == nullptr)
        co_return std::optional<speech::GeneratedAudio>();
    request = ttsRequest(job, dictionary);
    audio = co_await m_speech.textToSpeech(job.access, job.elevenLabsVoiceId, request);
    co_return outcomeOf(audio);
}

QCoro::Task<LineSpeaker::Dictionary> LineSpeaker::currentDictionary(LineJob job) {
    if (!job.model->takesDictionary)
        co_return Dictionary();
    const QPointer<LineSpeaker> self(this);
    if (!m_controller.pronunciations().isUploadedFor(job.access)) {
        const auto uploaded =
            co_await m_controller.pronunciations().uploadPronunciationDictionary(m_speech, job.access);
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

speech::TTSRequest LineSpeaker::ttsRequest(const LineJob &job, const Dictionary &dictionary) const {
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

std::optional<QString> LineSpeaker::previousLineText(const model::LineId &id) const {
    for (const model::ProjectTab &tab : m_controller.project().tabs) {
        const qsizetype index = tab.lineIds.indexOf(id);
        if (index < 0)
            continue;
        const model::ProjectLine *previous = index > 0 ? m_controller.lines().find(tab.lineIds.at(index - 1)) : nullptr;
        return previous != nullptr ? std::optional(previous->text) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace orlenta::controller
