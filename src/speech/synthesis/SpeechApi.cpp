#include "speech/synthesis/SpeechApi.h"

#include <algorithm>
#include <array>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>

#include "base/files/AtomicFile.h"
#include "speech/http/MultipartBody.h"
#include "speech/http/ServiceGateway.h"
#include "speech/synthesis/SpeechModel.h"

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

/// These refusals have the same HTTP status as a plan's refusal of a format, but another format wouldn't help.
bool isAboutSomethingElse(const ElevenLabsError &refusal) {
    static constexpr std::array codes{"invalid_ttd_stability"_L1,
                                      "unsupported_model"_L1,
                                      "text_too_long"_L1,
                                      "max_character_limit_exceeded"_L1,
                                      "voice_not_found"_L1,
                                      "model_not_found"_L1,
                                      "invalid_api_key"_L1,
                                      "missing_permissions"_L1,
                                      "quota_exceeded"_L1,
                                      "insufficient_credits"_L1,
                                      "detected_unusual_activity"_L1};
    return std::any_of(codes.begin(), codes.end(), [&](QLatin1String code) { return refusal.code() == code; });
}

/// Whether the plan doesn't include the requested format.
bool refusesFormat(const SpeechError &error) {
    if (!error.service() || error.service()->kind() != ElevenLabsError::Kind::HttpError)
        return false;
    const int status = error.service()->status();
    return (status == 400 || status == 402 || status == 403) && !isAboutSomethingElse(*error.service()) &&
           !AllowedStabilities::namedBy(error);
}

std::optional<SpeechError> lengthProblem(const TTSRequest &request) {
    const SpeechModel *model = SpeechModel::findById(request.modelId);
    const int count = perceivedCharacters(request.text);
    if (model == nullptr || count <= model->characterLimit)
        return std::nullopt;
    return SpeechError::textTooLong(count, model->characterLimit);
}

HttpRequest textToSpeechRequest(const ServiceAccess &access, const QString &voiceId, const TTSRequest &request) {
    const QString voice = QString::fromLatin1(QUrl::toPercentEncoding(voiceId));
    return HttpRequest::postJson(access, u"/v1/text-to-speech/"_s + voice, request.toJson());
}

HttpRequest speechToSpeechRequest(const ServiceAccess &access, const QString &voiceId, const QByteArray &recording,
                                  const VoiceSettings &settings) {
    const QString voice = QString::fromLatin1(QUrl::toPercentEncoding(voiceId));
    MultipartBody form;
    // The service detects the format itself, whatever the file's name.
    form.addFile("audio", "direction.wav", "audio/wav", recording);
    form.addField("model_id", speechToSpeechModelId().toUtf8());
    form.addField("voice_settings", toJson(settings));
    return HttpRequest::postForm(access, u"/v1/speech-to-speech/"_s + voice, form);
}

QList<ReplyFormat> previewLadder(bool supportsPCMOutput) {
    if (!supportsPCMOutput)
        return {ReplyFormat::mp3(192)};
    return {ReplyFormat::pcm(48000), ReplyFormat::pcm(44100), ReplyFormat::mp3(192)};
}

base::Result<UploadedDictionary, SpeechError> readUploadedDictionary(const QByteArray &json) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return base::fail(SpeechError::decoding(error.errorString()));
    const QJsonValue id = document.object().value(u"id"_s);
    const QJsonValue versionId = document.object().value(u"version_id"_s);
    if (!id.isString() || !versionId.isString())
        return base::fail(SpeechError(ElevenLabsError::invalidResponse()));
    return UploadedDictionary{id.toString(), versionId.toString()};
}

} // namespace

SpeechApi::SpeechApi(ServiceGateway &gateway, const base::UserDefaults &defaults,
                     std::function<bool()> supportsPCMOutput)
    : m_gateway(gateway), m_defaults(defaults), m_supportsPCMOutput(std::move(supportsPCMOutput)) {}

QCoro::Task<SpeechApi::AudioResult> SpeechApi::textToSpeech(ServiceAccess access, QString voiceId, TTSRequest request) {
    if (const auto problem = lengthProblem(request))
        co_return base::fail(*problem);
    const QPointer<SpeechApi> self(this);
    const AudioOutputPreferences preferences = AudioOutputPreferences::read(m_defaults);
    const QString prefix = u"tts"_s;
    m_stabilities.apply(access.endpoint, request);
    HttpRequest http = textToSpeechRequest(access, voiceId, request);
    auto audio = co_await requestAudioFile(http, prefix, preferences);
    if (const auto allowed = audio ? std::nullopt : AllowedStabilities::namedBy(audio.error()); allowed && self) {
        m_stabilities.remember(access.endpoint, request.modelId, *allowed);
        if (m_stabilities.apply(access.endpoint, request)) {
            http = textToSpeechRequest(access, voiceId, request);
            audio = co_await requestAudioFile(http, prefix, preferences);
        }
    }
    if (audio && self)
        Q_EMIT spent(access, u"text-to-speech"_s, estimatedCharacters(request.text, request.modelId),
                     UsageEstimate::Apply);
    co_return audio;
}

QCoro::Task<SpeechApi::AudioResult> SpeechApi::speechToSpeech(ServiceAccess access, QString audioPath, QString voiceId,
                                                              VoiceSettings settings) {
    const QPointer<SpeechApi> self(this);
    const AudioOutputPreferences preferences = AudioOutputPreferences::read(m_defaults);
    const QString prefix = u"sts"_s;
    QFuture<base::Result<QByteArray, base::FileError>> reading =
        QtConcurrent::run([audioPath] { return base::readWholeFile(audioPath); });
    const auto recording = co_await reading;
    if (!self)
        co_return base::fail(SpeechError::cancelled());
    if (!recording)
        co_return base::fail(SpeechError::file(recording.error().description()));
    const HttpRequest http = speechToSpeechRequest(access, voiceId, *recording, settings);
    auto audio = co_await requestAudioFile(http, prefix, preferences);
    if (audio && self)
        Q_EMIT spent(access, u"speech-to-speech"_s, 0, UsageEstimate::Skip);
    co_return audio;
}

QCoro::Task<base::Result<GeneratedPreviewAudio, SpeechError>>
SpeechApi::generateHQVoicePreview(ServiceAccess access, QString voiceId, QString text, QString modelId,
                                  CancellationPtr cancellation) {
    const QPointer<SpeechApi> self(this);
    TTSRequest request;
    request.text = text;
    request.modelId = modelId;
    request.setVoiceSettings({});
    HttpRequest http = textToSpeechRequest(access, voiceId, request);
    http.cancellation = cancellation;
    const QString prefix = u"voice_preview"_s;
    const QList<ReplyFormat> ladder = previewLadder(m_supportsPCMOutput());
    SpeechError lastError = SpeechError::cancelled();
    for (const ReplyFormat &format : ladder) {
        if (!self)
            break;
        const auto reply = co_await requestReply(http, prefix, format);
        if (reply) {
            if (self)
                Q_EMIT spent(access, u"voice-preview"_s, estimatedCharacters(text, modelId), UsageEstimate::Apply);
            co_return keepAsPreview(**reply, format);
        }
        lastError = reply.error();
        // The next format would hit the same limit.
        if (lastError.isRateLimited() || lastError.isCancelled())
            break;
    }
    co_return base::fail(lastError);
}

QCoro::Task<base::Result<UploadedDictionary, SpeechError>>
SpeechApi::addPronunciationDictionary(ServiceAccess access, QString name, QString description, QByteArray lexicon) {
    MultipartBody form;
    form.addField("name", name.toUtf8());
    form.addField("description", description.toUtf8());
    form.addFile("file", "pronunciation.pls", "application/xml", lexicon);
    const HttpRequest request = HttpRequest::postForm(access, u"/v1/pronunciation-dictionaries/add-from-file"_s, form);
    const auto reply = co_await m_gateway.send(request);
    if (!reply)
        co_return base::fail(reply.error());
    co_return readUploadedDictionary(reply->body);
}

QCoro::Task<SpeechApi::AudioResult> SpeechApi::requestAudioFile(HttpRequest request, QString prefix,
                                                                AudioOutputPreferences preferences) {
    const QPointer<SpeechApi> self(this);
    const QString sourcePrefix = prefix + u"_src"_s;
    const bool isWav = preferences.audioFormat == AudioFormat::Wav;
    const ReplyFormat wanted =
        isWav ? ReplyFormat::pcm(44100) : ReplyFormat::mp3(static_cast<int>(preferences.mp3Quality));
    auto reply = co_await requestReply(request, sourcePrefix, wanted);
    if (!reply && self && isWav && refusesFormat(reply.error())) {
        const ReplyFormat best = ReplyFormat::mp3(192);
        reply = co_await requestReply(request, sourcePrefix, best);
    }
    if (!reply)
        co_return base::fail(reply.error());
    const int rate = isWav ? static_cast<int>(preferences.wavSampleRate) : 44100;
    const int depth = isWav ? static_cast<int>(preferences.wavBitDepth) : 16;
    co_return co_await convertReply(*reply, prefix, rate, depth);
}

QCoro::Task<base::Result<ReplyFilePtr, SpeechError>> SpeechApi::requestReply(HttpRequest request, QString prefix,
                                                                             ReplyFormat format) {
    request.url.setQuery(u"output_format="_s + format.name);
    request.replyFile = replyFile(prefix, format);
    const ReplyFilePtr file = request.replyFile;
    const auto reply = co_await m_gateway.send(request);
    if (!reply)
        co_return base::fail(reply.error());
    if (const auto complete = completeReply(*file, reply->contentType, format); !complete)
        co_return base::fail(complete.error());
    co_return file;
}

} // namespace orlenta::speech
