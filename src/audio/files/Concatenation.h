#pragma once

#include <variant>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "audio/files/AudioFileError.h"
#include "base/Result.h"

namespace orlenta::audio {

/// What decides the joined file's format: one input's own.
struct ConcatenationInputInfo {
    /// Frames a second.
    double sampleRate = 0.0;
    quint32 channelCount = 0;
    /// Bits of one stored sample; 24 for a compressed input.
    int bitDepth = 0;

    friend bool operator==(const ConcatenationInputInfo &, const ConcatenationInputInfo &) = default;
};

/// Why files could not be joined: one of the joiner's own reasons, or the failure of one file.
class ConcatenationError final {
public:
    enum class Reason {
        NoFiles,
        NoBuffer,
        NoConvertedBuffer,
        NoConverter,
        TooLarge,
        ConversionFailed,
    };

    ConcatenationError(Reason reason) : m_cause(reason) {}
    ConcatenationError(AudioFileError error) : m_cause(std::move(error)) {}

    /// The area that the codes belong to.
    [[nodiscard]] static QString domain();
    /// The same error, but for the name of the file at `path`, which the user has never seen.
    [[nodiscard]] ConcatenationError withoutNameOf(const QString &path) const;
    /// 1 to 5 for the joiner's own reasons, 0 for the failure of a file.
    [[nodiscard]] int code() const;
    /// What the user reads.
    [[nodiscard]] QString description() const;

    friend bool operator==(const ConcatenationError &, const ConcatenationError &) = default;

private:
    std::variant<Reason, AudioFileError> m_cause;
};

enum class ConcatenationOwner {
    /// The next concatenation that nobody retains removes the file, whoever asks for it.
    NextConcatenation,
    /// The caller keeps the file and deletes it.
    Caller,
};

/// The joined file's format. Equal rates (to within 0.5 Hz): the first input's format. Otherwise 48000 Hz, the first
/// input's channels, and the highest bit depth, at least 24. `inputs` is not empty.
[[nodiscard]] ConcatenationInputInfo concatenationFormat(const QList<ConcatenationInputInfo> &inputs);

/// Writes the files one after another, without a gap, into a new WAV file "continuous_<UUID>.wav" of the folder
/// "OrlentaStitchedAudio" among the temporary files, and gives its URL. Inputs of the output's rate and channel count
/// are copied, others converted; either way memory stays the same however long they are. The file is not flushed to
/// disk: it can be made again. A failure leaves nothing. Blocking; any thread, several at a time.
[[nodiscard]] base::Result<QUrl, ConcatenationError> concatenateAudio(const QList<QUrl> &urls,
                                                                      ConcatenationOwner retainedBy);

/// The same into a file of the caller's choice, which is replaced only once the new one is whole.
[[nodiscard]] base::Result<void, ConcatenationError> concatenateAudio(const QList<QUrl> &urls, const QUrl &outputURL);

} // namespace orlenta::audio
