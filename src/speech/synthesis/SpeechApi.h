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

/// An uploaded dictionary's ids at the service.
struct UploadedDictionary {
    QString id;
    QString versionId;
};

/// The speech requests. Each gets its access from the caller, reads the user's output format at its start, and keeps
/// both through all retries and fall-backs. Main thread; audio is converted in a worker.
class SpeechApi final : public QObject {
    Q_OBJECT
public:
    using AudioResult = base::Result<GeneratedAudio, SpeechError>;

    /// `supportsPCMOutput` tells whether the account's plan suggests uncompressed audio.
    SpeechApi(ServiceGateway &gateway, const base::UserDefaults &defaults, std::function<bool()> supportsPCMOutput);

    /// Speaks a text. A text over its model's limit fails without a request. If the service refuses the stability, the
    /// request is repeated once with the nearest allowed value, which is remembered.
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
    /// A request succeeded. `characters` is its expected cost in credits for the account of `access`.
    void spent(const ServiceAccess &access, const QString &context, int characters, UsageEstimate estimate);

private:
    /// The common path of text-to-speech and speech-to-speech: returns a WAV file according to the preferences. If the
    /// plan refuses uncompressed audio, MP3 is requested instead.
    QCoro::Task<AudioResult> requestAudioFile(HttpRequest request, QString prefix, AudioOutputPreferences preferences);
    /// Returns the reply in one of the service's formats, as a completed file.
    QCoro::Task<base::Result<ReplyFilePtr, SpeechError>> requestReply(HttpRequest request, QString prefix,
                                                                      ReplyFormat format);

    ServiceGateway &m_gateway;
    const base::UserDefaults &m_defaults;
    std::function<bool()> m_supportsPCMOutput;
    AllowedStabilities m_stabilities;
};

} // namespace orlenta::speech
