#pragma once

#include <functional>

#include <qcoro/qcorotask.h>
#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "base/UserDefaults.h"
#include "speech/account/UsageTracker.h"
#include "speech/http/Cancellation.h"
#include "speech/http/HttpRequest.h"
#include "speech/http/SpeechError.h"
#include "speech/synthesis/AllowedStabilities.h"
#include "speech/synthesis/AudioOutputPreferences.h"
#include "speech/synthesis/AudioReply.h"
#include "speech/synthesis/GeneratedAudio.h"
#include "speech/synthesis/TTSRequest.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

class ServiceGateway;

/// A dictionary as the service filed it.
struct UploadedDictionary {
    QString id;
    QString versionId;
};

/// The requests that make speech. Each takes the access it runs on, reads the user's output format when it starts, and
/// stays with both through every retry and fall-back. Main thread; audio is converted in a worker.
class SpeechApi final : public QObject {
    Q_OBJECT
public:
    using AudioResult = base::Result<GeneratedAudio, SpeechError>;

    /// `supportsPCMOutput` tells whether the account's plan suggests uncompressed audio.
    SpeechApi(ServiceGateway &gateway, const base::UserDefaults &defaults, std::function<bool()> supportsPCMOutput);

    /// Speaks a text. One that is longer than its model takes is refused without a request. A stability that the
    /// service refuses is sent once more as the nearest one it allows, which is remembered.
    QCoro::Task<AudioResult> textToSpeech(ServiceAccess access, QString voiceId, TTSRequest request);
    /// Speaks the recording at `audioPath` with another voice.
    QCoro::Task<AudioResult> speechToSpeech(ServiceAccess access, QString audioPath, QString voiceId,
                                            VoiceSettings settings);
    /// Speaks `text` in the best format that the plan allows.
    QCoro::Task<base::Result<GeneratedPreviewAudio, SpeechError>>
    generateHQVoicePreview(ServiceAccess access, QString voiceId, QString text, QString modelId,
                           CancellationPtr cancellation = nullptr);
    /// Uploads a pronunciation lexicon document.
    QCoro::Task<base::Result<UploadedDictionary, SpeechError>>
    addPronunciationDictionary(ServiceAccess access, QString name, QString description, QByteArray lexicon);

Q_SIGNALS:
    /// A request succeeded: its expected cost in credits, for the account of `access`.
    void spent(const ServiceAccess &access, const QString &context, int characters, UsageEstimate estimate);

private:
    /// The common path of text-to-speech and speech-to-speech: a WAV file as the preferences ask for. A plan that
    /// refuses uncompressed audio is asked for MP3 instead.
    QCoro::Task<AudioResult> requestAudioFile(HttpRequest request, QString prefix, AudioOutputPreferences preferences);
    /// The reply in one of the service's formats, as a complete file.
    QCoro::Task<base::Result<ReplyFilePtr, SpeechError>> requestReply(HttpRequest request, QString prefix,
                                                                      ReplyFormat format);

    ServiceGateway &m_gateway;
    const base::UserDefaults &m_defaults;
    std::function<bool()> m_supportsPCMOutput;
    AllowedStabilities m_stabilities;
};

} // namespace orlenta::speech
