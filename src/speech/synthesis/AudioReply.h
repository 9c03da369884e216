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
    /// The service's word for it, such as "mp3_44100_128".
    QString name;
};

/// The file that a reply of this format goes to: "<prefix>_<UUID>.<mp3 or wav>" in the private caches folder.
[[nodiscard]] ReplyFilePtr replyFile(const QString &prefix, const ReplyFormat &format);

/// Closes the file of a reply that has arrived; raw samples become a WAV file. Fails when the reply isn't audio.
[[nodiscard]] base::Result<void, SpeechError> completeReply(ReplyFile &file, const QByteArray &contentType,
                                                            const ReplyFormat &format);

/// A WAV file of `sampleRate` hertz and `bitDepth` bits made of a complete reply, 0.2 s of silence at its end. The work
/// runs in a thread of the global pool.
QCoro::Task<base::Result<GeneratedAudio, SpeechError>> convertReply(ReplyFilePtr file, QString prefix, int sampleRate,
                                                                    int bitDepth);

/// Lets a complete reply stay as a preview. Its rate is the file's own, or the format's if the file can't be read.
[[nodiscard]] GeneratedPreviewAudio keepAsPreview(ReplyFile &file, const ReplyFormat &format);

} // namespace orlenta::speech
