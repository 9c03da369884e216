#include "speech/synthesis/SpeechApi.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>

#include "base/AtomicFile.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/http/MultipartBody.h"
#include "speech/http/ServiceGateway.h"
#include "speech/synthesis/TTSRequest.h"

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

/// What a plan that may not have uncompressed audio answers.
bool refusesFormat(const SpeechError &error) {
    if (!error.service() || error.service()->kind() != ElevenLabsError::Kind::HttpError)
        return false;
    const int status = error.service()->status();
    return status == 400 || status == 402 || status == 403;
}

QByteArray previewBody(const QString &text, const QString &modelId) {
    TTSRequest request;
    request.text = text;
    request.modelId = modelId;
    if (modelId == u"eleven_v3")
        request.v3VoiceSettings = V3VoiceSettings{};
    else
        request.voiceSettings = VoiceSettings{};
    return request.toJson();
}

QString pathOfVoice(QLatin1String kind, const QString &voiceId) {
    return u"/v1/%1/%2"_s.arg(kind, QString::fromLatin1(QUrl::toPercentEncoding(voiceId)));
}

QString jsonContentType() {
    return u"application/json"_s;
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

SpeechApi::SpeechApi(ElevenLabsService &service, base::UserDefaults &defaults)
    : m_service(service), m_defaults(defaults) {}

QCoro::Task<base::Result<QString, SpeechError>> SpeechApi::requestAudioFile(QString path, QByteArray body,
                                                                            QString contentType, QString prefix,
                                                                            QString apiKey,
                                                                            AudioOutputPreferences preferences) {
    if (preferences.audioFormat == AudioFormat::Wav)
        co_return co_await requestWav(path, body, contentType, prefix, apiKey, preferences);
    const QString format = u"mp3_44100_%1"_s.arg(static_cast<int>(preferences.mp3Quality));
    auto mp3 = co_await requestAudio(path, format, body, contentType, apiKey);
    if (!mp3)
        co_return base::fail(mp3.error());
    co_return co_await convertGeneratedAudio(*mp3, u"mp3"_s, prefix, 44100, 16);
}

QCoro::Task<base::Result<QString, SpeechError>> SpeechApi::requestWav(QString path, QByteArray body,
                                                                      QString contentType, QString prefix,
                                                                      QString apiKey,
                                                                      AudioOutputPreferences preferences) {
    const QPointer<SpeechApi> self(this);
    const int rate = static_cast<int>(preferences.wavSampleRate);
    const int depth = static_cast<int>(preferences.wavBitDepth);
    auto pcm = co_await requestAudio(path, u"pcm_44100"_s, body, contentType, apiKey);
    if (pcm)
        co_return co_await convertGeneratedAudio(wavFileOfPcm(*pcm, 44100), u"wav"_s, prefix, rate, depth);
    if (!self || !refusesFormat(pcm.error()))
        co_return base::fail(pcm.error());
    auto mp3 = co_await requestAudio(path, u"mp3_44100_192"_s, body, contentType, apiKey);
    if (!mp3)
        co_return base::fail(mp3.error());
    co_return co_await convertGeneratedAudio(*mp3, u"mp3"_s, prefix, rate, depth);
}

QCoro::Task<base::Result<QString, SpeechError>> SpeechApi::speechToSpeech(QString audioPath, QString voiceId,
                                                                          QString modelId, VoiceSettings settings) {
    const QPointer<SpeechApi> self(this);
    const auto recording = base::readWholeFile(audioPath);
    if (!recording)
        co_return base::fail(SpeechError::file(recording.error().description()));
    MultipartBody form;
    // The service looks into the file, whatever it is called.
    form.addFile("audio", "direction.wav", "audio/wav", *recording);
    form.addField("model_id", modelId.toUtf8());
    form.addField("voice_settings", toJson(settings));
    const QString path = pathOfVoice("speech-to-speech"_L1, voiceId);
    const AudioOutputPreferences preferences = AudioOutputPreferences::read(m_defaults);
    auto file =
        co_await requestAudioFile(path, form.bytes(), form.contentType(), u"sts"_s, m_service.apiKey(), preferences);
    if (file && self)
        m_service.scheduleUsageRefresh(u"speech-to-speech"_s, 0, ElevenLabsService::UsageEstimate::Skip);
    co_return file;
}

QCoro::Task<base::Result<GeneratedPreviewAudio, SpeechError>>
SpeechApi::generateHQVoicePreview(QString voiceId, QString text, QString modelId, CancellationPtr cancellation) {
    const QPointer<SpeechApi> self(this);
    const QByteArray body = previewBody(text, modelId);
    const QString path = textToSpeechPath(voiceId);
    QStringList ladder{u"mp3_44100_192"_s};
    if (m_service.supportsPCMOutput())
        ladder = QStringList{u"pcm_48000"_s, u"pcm_44100"_s} + ladder;
    SpeechError lastError = SpeechError::cancelled();
    for (const QString &rung : std::as_const(ladder)) {
        if (!self)
            break;
        auto audio = co_await requestAudio(path, rung, body, jsonContentType(), m_service.apiKey(), cancellation);
        auto preview = audio ? savePreview(*audio, rung) : base::fail(audio.error());
        if (preview) {
            if (self)
                m_service.scheduleUsageRefresh(u"voice-preview"_s, estimatedCharacters(text, modelId),
                                               ElevenLabsService::UsageEstimate::Apply);
            co_return preview;
        }
        lastError = preview.error();
        // A lower rung would meet the same limit.
        if (lastError.isRateLimited() || lastError.isCancelled())
            break;
    }
    co_return base::fail(lastError);
}

QCoro::Task<base::Result<UploadedDictionary, SpeechError>>
SpeechApi::addPronunciationDictionary(QString name, QString description, QByteArray lexicon, QString apiKey) {
    MultipartBody form;
    form.addField("name", name.toUtf8());
    form.addField("description", description.toUtf8());
    form.addFile("file", "pronunciation.pls", "application/xml", lexicon);
    HttpRequest request(m_service.gateway().address(u"/v1/pronunciation-dictionaries/add-from-file"_s), apiKey,
                        form.contentType().toLatin1(), form.bytes());
    auto reply = co_await m_service.gateway().send(request);
    if (!reply)
        co_return base::fail(reply.error());
    co_return readUploadedDictionary(reply->body);
}

QString SpeechApi::textToSpeechPath(const QString &voiceId) {
    return pathOfVoice("text-to-speech"_L1, voiceId);
}

QCoro::Task<base::Result<QByteArray, SpeechError>> SpeechApi::requestAudio(QString path, QString outputFormat,
                                                                           QByteArray body, QString contentType,
                                                                           QString apiKey,
                                                                           CancellationPtr cancellation) {
    HttpRequest request(m_service.gateway().address(path + u"?output_format="_s + outputFormat), apiKey,
                        contentType.toLatin1(), body);
    request.replyKind = HttpRequest::ReplyKind::Audio;
    request.cancellation = cancellation;
    auto reply = co_await m_service.gateway().send(request);
    if (!reply)
        co_return base::fail(reply.error());
    co_return reply->body;
}

} // namespace orlenta::speech
