#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "speech/http/ReplyFile.h"
#include "speech/http/SpeechError.h"
#include "speech/synthesis/GeneratedAudio.h"

namespace orlenta::speech {

/// One of the service's output formats: MP3 of 44.1 kHz, or raw mono 16-bit little-endian samples.
struct ReplyFormat {
    enum class Coding { Mp3, Pcm };

    [[nodiscard]] static ReplyFormat mp3(int kilobitsPerSecond);
    [[nodiscard]] static ReplyFormat pcm(int sampleRate);

    Coding coding = Coding::Mp3;
    /// In hertz.
    int sampleRate = 44100;
    /// The service's name for it, such as "mp3_44100_128".
    QString name;
};

/// A new file for a reply of this format: "<prefix>_<UUID>.<mp3 or wav>" in the private caches folder.
[[nodiscard]] ReplyFilePtr replyFile(const QString &prefix, const ReplyFormat &format);

/// Completes the file of a finished reply; raw samples become a WAV file. Fails if the reply isn't audio.
[[nodiscard]] base::Result<void, SpeechError> completeReply(ReplyFile &file, const QByteArray &contentType,
                                                            const ReplyFormat &format);

/// Converts a completed reply to a WAV file of `sampleRate` hertz and `bitDepth` bits, with 0.2 s of silence at its
/// end. Runs in the global thread pool.
QCoro::Task<base::Result<GeneratedAudio, SpeechError>> convertReply(ReplyFilePtr file, QString prefix, int sampleRate,
                                                                    int bitDepth);

/// Keeps a completed reply as a preview. The rate is the file's, or the format's if the file can't be read.
[[nodiscard]] GeneratedPreviewAudio keepAsPreview(ReplyFile &file, const ReplyFormat &format);

} // namespace orlenta::speech
