#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "base/UserDefaults.h"
#include "speech/http/Cancellation.h"
#include "speech/http/SpeechError.h"
#include "speech/synthesis/AudioOutputPreferences.h"
#include "speech/synthesis/GeneratedAudioFiles.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

class ElevenLabsService;

/// A dictionary as the service filed it.
struct UploadedDictionary {
    QString id;
    QString versionId;
};

/// The requests that make speech, and the files that come of them. Paths are of the private caches folder and belong to
/// the caller. Main thread; the conversion of audio runs in a worker.
class SpeechApi final : public QObject {
    Q_OBJECT
public:
    SpeechApi(ElevenLabsService &service, base::UserDefaults &defaults);

    /// Posts `body` to `path` in the format that the preferences ask for, and returns the path of a WAV file of those
    /// preferences that ends in 0.2 s of silence. A plan that refuses uncompressed audio is asked for MP3 instead.
    QCoro::Task<base::Result<QString, SpeechError>> requestAudioFile(QString path, QByteArray body, QString contentType,
                                                                     QString prefix, QString apiKey,
                                                                     AudioOutputPreferences preferences);
    /// Speaks the recording at `audioPath` with another voice, in the format of the user's defaults.
    QCoro::Task<base::Result<QString, SpeechError>> speechToSpeech(QString audioPath, QString voiceId, QString modelId,
                                                                   VoiceSettings settings);
    /// Speaks `text` in the best format that the plan allows.
    QCoro::Task<base::Result<GeneratedPreviewAudio, SpeechError>>
    generateHQVoicePreview(QString voiceId, QString text, QString modelId, CancellationPtr cancellation = nullptr);
    /// Uploads a pronunciation lexicon document.
    QCoro::Task<base::Result<UploadedDictionary, SpeechError>>
    addPronunciationDictionary(QString name, QString description, QByteArray lexicon, QString apiKey);

    /// "/v1/text-to-speech/<voice>", the id made safe for a path.
    [[nodiscard]] static QString textToSpeechPath(const QString &voiceId);

private:
    QCoro::Task<base::Result<QString, SpeechError>> requestWav(QString path, QByteArray body, QString contentType,
                                                               QString prefix, QString apiKey,
                                                               AudioOutputPreferences preferences);
    /// Posts in one of the service's formats, as "mp3_44100_128", and gives the audio as it came.
    QCoro::Task<base::Result<QByteArray, SpeechError>> requestAudio(QString path, QString outputFormat, QByteArray body,
                                                                    QString contentType, QString apiKey,
                                                                    CancellationPtr cancellation = nullptr);

    ElevenLabsService &m_service;
    base::UserDefaults &m_defaults;
};

} // namespace orlenta::speech
