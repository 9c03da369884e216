#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "base/Result.h"
#include "speech/http/SpeechError.h"

/// Audio of the service on its way to disk: files in the private caches folder, which belong to the caller.
namespace orlenta::speech {

/// The audio of a voice preview and the rate it plays at, in hertz.
struct GeneratedPreviewAudio {
    QUrl fileURL;
    int sampleRateHz = 0;
};

/// A WAV file's bytes around raw mono 16-bit little-endian samples of `sampleRate` hertz.
[[nodiscard]] QByteArray wavFileOfPcm(const QByteArray &pcm, int sampleRate);

/// The path of a WAV file of `sampleRate` hertz and `bitDepth` bits made of an audio file's bytes, 0.2 s of silence at
/// its end. The work runs in a thread of the global pool.
QCoro::Task<base::Result<QString, SpeechError>> convertGeneratedAudio(QByteArray bytes, QString sourceExtension,
                                                                      QString prefix, int sampleRate, int bitDepth);

/// Keeps a preview as it came: samples of an output format "pcm_..." as a WAV file, anything else as MP3. The rate is
/// the file's own, or the format's where the file can't be read.
[[nodiscard]] base::Result<GeneratedPreviewAudio, SpeechError> savePreview(const QByteArray &audio,
                                                                           const QString &outputFormat);

} // namespace orlenta::speech
