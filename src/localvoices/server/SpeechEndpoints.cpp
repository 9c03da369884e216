// The endpoints of LocalVoicesServer that answer with audio.
#include <cmath>
#include <utility>

#include <QtCore/QUuid>

#include "localvoices/protocol/OutputFormat.h"
#include "localvoices/protocol/Refusal.h"
#include "localvoices/protocol/SpeechToSpeechRequest.h"
#include "localvoices/protocol/TextToSpeechRequest.h"
#include "localvoices/server/LocalVoicesServer.h"
#include "localvoices/voices/VoiceCatalogue.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr double conversionCreditsPerMinute = 1000.0;

/// The duration of encoded audio in seconds, computed from its size.
double secondsOf(const QByteArray &audio, const OutputFormat &format) {
    const auto size = static_cast<double>(audio.size());
    switch (format.codec) {
    case Codec::Mp3:
        return size * 8.0 / (format.kilobits * 1000.0);
    case Codec::Pcm:
    case Codec::Wav:
        return size / (format.rate * 2.0);
    case Codec::MuLaw:
    case Codec::ALaw:
        return size / format.rate;
    }
    return 0;
}

/// The refusal if the voice or format is unknown.
std::optional<Refusal> refusalOf(const SpeechJob &job) {
    if (isOpusFormat(job.outputFormat))
        return outputFormatNotAllowed(job.outputFormat);
    if (!findOutputFormat(job.outputFormat))
        return unknownOutputFormat(job.outputFormat, outputFormatNames());
    if (!findVoice(job.voiceId))
        return voiceNotFound(job.voiceId);
    return std::nullopt;
}

/// How to report a worker's failure to the client.
Refusal refusalOf(JobKind kind, const WorkerResult &result) {
    if (result.exit != WorkerExit::UnusableInput)
        return internalError(result.complaint);
    return kind == JobKind::Speak ? speechTooLong(result.complaint) : unusableAudio(result.complaint);
}

bool isOneOfThreeSteps(double stability) {
    return stability == 0.0 || stability == 0.5 || stability == 1.0;
}

} // namespace

void LocalVoicesServer::routeSpeech(const IncomingRequest &request, const Delivery &delivery) {
    SpeechJob job;
    job.voiceId = request.path.section(u'/', 3, 3);
    const QString asked = request.query.queryItemValue(u"output_format"_s);
    job.outputFormat = asked.isEmpty() ? u"mp3_44100_128"_s : asked;
    if (const std::optional<Refusal> refusal = refusalOf(job)) {
        delivery.send(refusal->answer());
        return;
    }
    if (request.path.startsWith(u"/v1/speech-to-speech/"_s)) {
        const std::variant<SpeechToSpeechRequest, HttpAnswer> read = SpeechToSpeechRequest::read(request);
        if (const auto *refusal = std::get_if<HttpAnswer>(&read))
            delivery.send(*refusal);
        else
            convert(std::get<SpeechToSpeechRequest>(read), std::move(job), delivery);
        return;
    }
    const std::variant<TextToSpeechRequest, HttpAnswer> read = TextToSpeechRequest::read(request.body);
    if (const auto *refusal = std::get_if<HttpAnswer>(&read))
        delivery.send(*refusal);
    else
        speak(std::get<TextToSpeechRequest>(read), std::move(job), delivery);
}

void LocalVoicesServer::speak(const TextToSpeechRequest &request, SpeechJob job, const Delivery &delivery) {
    const std::optional<SpeechModel> model = findSpeechModel(request.modelId, ModelTask::TextToSpeech);
    if (!model) {
        delivery.send(unknownModel(request.modelId).answer());
        return;
    }
    const qsizetype characters = request.text.toUcs4().size();
    const auto cost = static_cast<qint64>(std::ceil(static_cast<double>(characters) * model->characterCost));
    if (characters > model->longestText) {
        delivery.send(textTooLong(characters, model->longestText).answer());
        return;
    }
    if (request.hasContext && model->context == LineContext::Refused) {
        delivery.send(contextNotSupported(request.modelId).answer());
        return;
    }
    if (delivery.fault() == FaultKind::Stability && model->stability == StabilityScale::ThreeSteps &&
        !isOneOfThreeSteps(request.settings.stability)) {
        delivery.send(invalidStability().answer());
        return;
    }
    if (cost > m_account.remaining()) {
        delivery.send(quotaExceeded(m_account.limit(), m_account.remaining(), cost).answer());
        return;
    }
    for (const DictionaryLocator &locator : request.locators) {
        const std::vector<PronunciationRule> *rules = m_dictionaries.find(locator.dictionaryId, locator.versionId);
        if (rules == nullptr) {
            delivery.send(unknownDictionary(locator.dictionaryId).answer());
            return;
        }
        job.rules.insert(job.rules.end(), rules->begin(), rules->end());
    }
    job.kind = JobKind::Speak;
    job.text = request.text;
    job.languageCode = request.languageCode;
    job.settings = request.settings;
    job.phonemeRules = model->phonemeRules;
    runJob(
        job, [cost](const QByteArray &) { return cost; }, delivery,
        [delivery](const HttpAnswer &answer) { delivery.send(answer); });
}

void LocalVoicesServer::convert(const SpeechToSpeechRequest &request, SpeechJob job, const Delivery &delivery) {
    if (!findSpeechModel(request.modelId, ModelTask::SpeechToSpeech)) {
        delivery.send(unknownModel(request.modelId).answer());
        return;
    }
    if (request.audio.size() > largestRecording) {
        delivery.send(unusableAudio(u"The audio file is larger than 50 MB."_s).answer());
        return;
    }
    if (m_account.remaining() <= 0) {
        delivery.send(quotaExceeded(m_account.limit(), 0, 1).answer());
        return;
    }
    job.kind = JobKind::Convert;
    job.recording = request.audio;
    job.recordingForm = request.isPcm16 ? InputForm::Pcm16 : InputForm::File;
    job.settings = request.settings;
    const OutputFormat format = findOutputFormat(job.outputFormat).value_or(OutputFormat());
    const auto cost = [format](const QByteArray &audio) {
        return static_cast<qint64>(std::ceil(secondsOf(audio, format) / 60.0 * conversionCreditsPerMinute));
    };
    runJob(job, cost, delivery, [delivery](const HttpAnswer &answer) { delivery.send(answer); });
}

void LocalVoicesServer::runJob(const SpeechJob &job, const Costing &costOf, const Delivery &delivery,
                               const Answered &answered) {
    const QByteArray contentType = findOutputFormat(job.outputFormat).value_or(OutputFormat()).contentType();
    const JobKind kind = job.kind;
    const WorkerPool::JobId id =
        m_workers.start(job, [this, kind, contentType, costOf, answered](const WorkerResult &result) {
            if (result.exit != WorkerExit::Done) {
                answered(refusalOf(kind, result).answer());
                return;
            }
            const qint64 cost = costOf(result.audio);
            m_account.charge(cost);
            HttpAnswer answer{200, contentType, {}, result.audio};
            answer.headers = {{"request-id", QUuid::createUuid().toByteArray(QUuid::Id128)},
                              {"history-item-id", QUuid::createUuid().toByteArray(QUuid::Id128).left(20)},
                              {"character-cost", QByteArray::number(cost)},
                              {"current-concurrent-requests", QByteArray::number(m_workers.jobCount() + 1)},
                              {"maximum-concurrent-requests", QByteArray::number(m_workers.atOnce())}};
            answered(answer);
        });
    // Nobody is waiting for the line any more.
    connect(delivery.socket(), &QTcpSocket::disconnected, &m_workers, [this, id] { m_workers.cancel(id); });
}

} // namespace orlenta::localvoices
