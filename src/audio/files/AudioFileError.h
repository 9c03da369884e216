#pragma once

#include <QtCore/QString>

#include "base/files/FileError.h"

namespace orlenta::audio {

/// Why an audio file couldn't be read, written or converted.
struct AudioFileError {
    enum class Kind {
        /// The file is missing, isn't a regular file, or can't be opened.
        CannotOpen,
        /// The file contains no audio in a supported format.
        UnsupportedFormat,
        /// Reading hit damaged audio.
        Damaged,
        /// The output file couldn't be created or written; the disk may be full.
        CannotWrite,
        /// The output would exceed a WAV file's limit of 4 GiB.
        TooLarge,
        /// The converter doesn't support the formats, or failed.
        ConversionFailed,
        /// A buffer couldn't be allocated.
        OutOfMemory,
    };

    Kind kind = Kind::CannotOpen;
    /// May be empty.
    QString path;
    /// The system's or the library's message; may be empty.
    QString reason;

    /// One sentence for the user. Includes the file's name if `path` is set.
    [[nodiscard]] QString description() const;
    /// The same error without the file's name, for temporary files whose names mean nothing to the user.
    [[nodiscard]] AudioFileError withoutName() const;

    [[nodiscard]] static AudioFileError fromErrno(Kind kind, const QString &path, int code);
    [[nodiscard]] static AudioFileError fromFileError(Kind kind, const base::FileError &error);

    friend bool operator==(const AudioFileError &, const AudioFileError &) = default;
};

} // namespace orlenta::audio
