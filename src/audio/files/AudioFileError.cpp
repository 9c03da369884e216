#include "audio/files/AudioFileError.h"

#include <cstring>

#include <QtCore/QFileInfo>

namespace orlenta::audio {
namespace {

QString namedSentence(AudioFileError::Kind kind) {
    switch (kind) {
    case AudioFileError::Kind::CannotOpen:
        return QStringLiteral("“%1” could not be opened");
    case AudioFileError::Kind::UnsupportedFormat:
        return QStringLiteral("“%1” is not an audio file that can be read");
    case AudioFileError::Kind::Damaged:
        return QStringLiteral("“%1” is damaged");
    case AudioFileError::Kind::CannotWrite:
        return QStringLiteral("“%1” could not be written");
    case AudioFileError::Kind::TooLarge:
        return QStringLiteral("“%1” would be larger than a WAV file can be");
    case AudioFileError::Kind::ConversionFailed:
        return QStringLiteral("The audio of “%1” could not be converted");
    case AudioFileError::Kind::OutOfMemory:
        return QStringLiteral("There is not enough memory for the audio of “%1”");
    }
    return {};
}

QString unnamedSentence(AudioFileError::Kind kind) {
    switch (kind) {
    case AudioFileError::Kind::CannotOpen:
        return QStringLiteral("The audio could not be opened");
    case AudioFileError::Kind::UnsupportedFormat:
        return QStringLiteral("The audio has an unsupported format");
    case AudioFileError::Kind::Damaged:
        return QStringLiteral("The audio is damaged");
    case AudioFileError::Kind::CannotWrite:
        return QStringLiteral("The audio could not be written");
    case AudioFileError::Kind::TooLarge:
        return QStringLiteral("The audio is longer than a WAV file can hold");
    case AudioFileError::Kind::ConversionFailed:
        return QStringLiteral("The audio could not be converted");
    case AudioFileError::Kind::OutOfMemory:
        return QStringLiteral("There is not enough memory for the audio");
    }
    return {};
}

} // namespace

QString AudioFileError::description() const {
    const QString sentence =
        path.isEmpty() ? unnamedSentence(kind) : namedSentence(kind).arg(QFileInfo(path).fileName());
    const QString details = reason.endsWith(u'.') ? reason.chopped(1) : reason;
    return details.isEmpty() ? sentence + u'.' : sentence + QStringLiteral(": ") + details + u'.';
}

AudioFileError AudioFileError::withoutName() const {
    return {kind, {}, reason};
}

AudioFileError AudioFileError::fromErrno(Kind kind, const QString &path, int code) {
    return {kind, path, QString::fromLocal8Bit(std::strerror(code))};
}

AudioFileError AudioFileError::fromFileError(Kind kind, const base::FileError &error) {
    return {kind, error.path, error.reason};
}

} // namespace orlenta::audio
