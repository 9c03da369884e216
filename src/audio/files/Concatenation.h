#pragma once

#include <variant>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "audio/files/AudioFileError.h"
#include "base/Result.h"

namespace orlenta::audio {

/// One input's format, which determines the joined file's.
struct ConcatenationInputInfo {
    /// Hz.
    double sampleRate = 0.0;
    quint32 channelCount = 0;
    /// Bits per stored sample; 24 for a compressed input.
    int bitDepth = 0;

    friend bool operator==(const ConcatenationInputInfo &, const ConcatenationInputInfo &) = default;
};

/// Why files couldn't be joined: one of the reasons below, or an error of one file.
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

    /// The domain of the error codes.
    [[nodiscard]] static QString domain();
    /// The same error, without the file's name if it is about `path`, a temporary file.
    [[nodiscard]] ConcatenationError withoutNameOf(const QString &path) const;
    /// 1 to 5 for the reasons above, 0 for an error of a file.
    [[nodiscard]] int code() const;
    /// The message for the user.
    [[nodiscard]] QString description() const;

    friend bool operator==(const ConcatenationError &, const ConcatenationError &) = default;

private:
    std::variant<Reason, AudioFileError> m_cause;
};

enum class ConcatenationOwner {
    /// The next concatenation with this owner removes the file.
    NextConcatenation,
    /// The caller deletes the file.
    Caller,
};

/// The joined file's format. If all rates are equal to within 0.5 Hz, the first input's format. Otherwise 48000 Hz, the
/// first input's channel count, and the highest bit depth but at least 24. `inputs` must not be empty.
[[nodiscard]] ConcatenationInputInfo concatenationFormat(const QList<ConcatenationInputInfo> &inputs);

/// Joins the files without gaps into a new WAV file, "continuous_<UUID>.wav" in the temporary folder
/// "OrlentaStitchedAudio", and returns its URL. Copies inputs that have the output's rate and channel count, and
/// converts the others. Memory use doesn't depend on their length. Doesn't flush the file to disk, since it can be
/// recreated. A failure leaves nothing behind. Blocking; any thread, several calls at a time.
[[nodiscard]] base::Result<QUrl, ConcatenationError> concatenateAudio(const QList<QUrl> &urls,
                                                                      ConcatenationOwner retainedBy);

/// Joins the files into `outputURL`, which is replaced only once the new file is complete.
[[nodiscard]] base::Result<void, ConcatenationError> concatenateAudio(const QList<QUrl> &urls, const QUrl &outputURL);

} // namespace orlenta::audio
