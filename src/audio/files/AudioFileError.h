#pragma once

#include <QtCore/QString>

#include "base/files/FileError.h"

namespace orlenta::audio {

/// Why an audio file could not be read, written or converted.
struct AudioFileError {
    enum class Kind {
        /// The file is missing, is no regular file, or the system refuses to open it.
        CannotOpen,
        /// The file opened, but it holds no audio of a kind that is read here.
        UnsupportedFormat,
        /// The audio turned out to be damaged while it was read.
        Damaged,
        /// The output file could not be made or written, for want of space say.
        CannotWrite,
        /// The output would pass the 4 GiB that a WAV file can hold.
        TooLarge,
        /// The converter refused the formats or failed on the way.
        ConversionFailed,
        /// There was no memory for a buffer.
        OutOfMemory,
    };

    Kind kind = Kind::CannotOpen;
    /// Of the file; may be empty.
    QString path;
    /// The system's or the library's own words; may be empty.
    QString reason;

    /// One sentence for the user, with the file's name in it, if it has one.
    [[nodiscard]] QString description() const;
    /// The same error of a file whose name the user has never seen.
    [[nodiscard]] AudioFileError withoutName() const;

    [[nodiscard]] static AudioFileError fromErrno(Kind kind, const QString &path, int code);
    [[nodiscard]] static AudioFileError fromFileError(Kind kind, const base::FileError &error);

    friend bool operator==(const AudioFileError &, const AudioFileError &) = default;
};

} // namespace orlenta::audio
