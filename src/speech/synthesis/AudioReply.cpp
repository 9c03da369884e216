#include "speech/synthesis/AudioReply.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QUuid>

#include "audio/files/AudioFileReader.h"
#include "audio/files/WavConversion.h"
#include "audio/files/WavHeader.h"
#include "base/files/PrivateFolders.h"

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

using Conversion = base::Result<GeneratedAudio, SpeechError>;

constexpr qsizetype textProbe = 64;

bool isPrintable(char byte) {
    return (byte >= 0x20 && byte < 0x7F) || byte == '\t' || byte == '\r' || byte == '\n';
}

/// Audio has bytes outside printable ASCII near its start; a web page or a JSON object doesn't.
bool looksLikeText(const QByteArray &head) {
    const QByteArray first =
        head.startsWith("\xEF\xBB\xBF") ? head.mid(3, textProbe) : head.first(std::min(textProbe, head.size()));
    return std::all_of(first.begin(), first.end(), isPrintable);
}

/// Raw samples have no header. An audio file in their place would become noise.
bool looksLikeAudioFile(const QByteArray &head) {
    static constexpr std::array<const char *, 4> magics{"RIFF", "ID3", "OggS", "fLaC"};
    return std::any_of(magics.begin(), magics.end(), [&head](const char *magic) { return head.startsWith(magic); });
}

bool isWebPage(const QByteArray &contentType, const QByteArray &head) {
    const QByteArray start = head.trimmed().toLower();
    return contentType.toLower().startsWith("text/html") || start.startsWith("<!doctype html") ||
           start.startsWith("<html");
}

std::optional<SpeechError> problemOf(const ReplyFile &file, const QByteArray &contentType, const ReplyFormat &format) {
    if (isWebPage(contentType, file.head()))
        return SpeechError::intercepted();
    const QByteArray type = contentType.toLower();
    if (type.startsWith("text/") || type.startsWith("application/json") || looksLikeText(file.head()))
        return SpeechError::notAudio();
    if (format.coding != ReplyFormat::Coding::Pcm)
        return std::nullopt;
    // A sample has two bytes.
    const bool isRaw = !looksLikeAudioFile(file.head()) && file.size() % 2 == 0;
    return isRaw ? std::nullopt : std::optional(SpeechError::notAudio());
}

/// A source that can't be read is the service's reply, whose temporary name would mean nothing to the user. Any other
/// failure concerns a file on this computer.
SpeechError conversionError(const audio::AudioFileError &error) {
    using Kind = audio::AudioFileError::Kind;
    switch (error.kind) {
    case Kind::CannotOpen:
    case Kind::UnsupportedFormat:
    case Kind::Damaged:
        return SpeechError::notAudio();
    case Kind::ConversionFailed:
    case Kind::OutOfMemory:
        return ElevenLabsError::invalidResponse();
    case Kind::CannotWrite:
    case Kind::TooLarge:
        return SpeechError::cannotWrite(error.reason);
    }
    Q_UNREACHABLE();
}

int sampleRateOf(const QString &path, int nominal) {
    const auto reader = audio::AudioFileReader::open(path);
    return reader ? static_cast<int>(std::lround(reader->sampleRate())) : nominal;
}

} // namespace

ReplyFormat ReplyFormat::mp3(int kilobitsPerSecond) {
    return {Coding::Mp3, 44100, u"mp3_44100_%1"_s.arg(kilobitsPerSecond)};
}

ReplyFormat ReplyFormat::pcm(int sampleRate) {
    return {Coding::Pcm, sampleRate, u"pcm_%1"_s.arg(sampleRate)};
}

ReplyFilePtr replyFile(const QString &prefix, const ReplyFormat &format) {
    const bool isPcm = format.coding == ReplyFormat::Coding::Pcm;
    const QString path =
        u"%1/%2_%3.%4"_s.arg(base::PrivateFolders::caches(), prefix,
                             QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), isPcm ? u"wav"_s : u"mp3"_s);
    return std::make_shared<ReplyFile>(path, isPcm ? audio::wavHeaderSize : 0);
}

base::Result<void, SpeechError> completeReply(ReplyFile &file, const QByteArray &contentType,
                                              const ReplyFormat &format) {
    if (const auto problem = problemOf(file, contentType, format))
        return base::fail(*problem);
    QByteArray header;
    if (format.coding == ReplyFormat::Coding::Pcm)
        header = audio::wavHeader(static_cast<quint32>(file.size()), static_cast<quint32>(format.sampleRate), 1, 16);
    if (const auto finished = file.finish(header); !finished)
        return base::fail(SpeechError::cannotWrite(finished.error().reason));
    return {};
}

QCoro::Task<base::Result<GeneratedAudio, SpeechError>> convertReply(ReplyFilePtr file, QString prefix, int sampleRate,
                                                                    int bitDepth) {
    const QString folder = base::PrivateFolders::caches();
    // The result owns the file from the start, so it is deleted even if nobody awaits the conversion any more.
    QFuture<Conversion> conversion = QtConcurrent::run([file, prefix, sampleRate, bitDepth, folder]() -> Conversion {
        const auto converted = audio::convertToWAV(file->path(), prefix, sampleRate, bitDepth, folder);
        if (!converted)
            return base::fail(conversionError(converted.error()));
        return GeneratedAudio(*converted);
    });
    const Conversion converted = co_await conversion;
    co_return converted;
}

GeneratedPreviewAudio keepAsPreview(ReplyFile &file, const ReplyFormat &format) {
    file.keep();
    return {QUrl::fromLocalFile(file.path()), sampleRateOf(file.path(), format.sampleRate)};
}

} // namespace orlenta::speech
