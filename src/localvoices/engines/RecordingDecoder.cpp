#include "localvoices/engines/RecordingDecoder.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <sys/mman.h>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include "audio/files/SndfileDecoder.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

base::Failure<QString> unreadable(const QString &reason) {
    return base::fail(reason.isEmpty() ? u"The audio file could not be read."_s
                                       : u"The audio file could not be read: %1"_s.arg(reason));
}

/// Averages the channels. Clips, because a floating-point file may contain any number.
float mixed(std::span<const double> channels) {
    const double sum = std::accumulate(channels.begin(), channels.end(), 0.0, [](double before, double sample) {
        return before + std::clamp(sample, -1.0, 1.0);
    });
    return static_cast<float>(sum / static_cast<double>(channels.size()));
}

base::Result<Sound, QString> decoded(const QString &path) {
    const auto decoder = audio::SndfileDecoder::open(path);
    if (!decoder)
        return unreadable(decoder.error().reason);
    const double rate = decoder.value()->format().sampleRate;
    const auto channels = static_cast<std::size_t>(decoder.value()->format().channelCount);
    Sound sound{{}, static_cast<int>(rate)};
    const auto longest = static_cast<std::size_t>(longestRecordingSeconds * rate);
    std::vector<double> block(4096 * channels);
    // Don't trust the frame count in the header.
    while (true) {
        const auto read = decoder.value()->read(std::span(block));
        if (!read)
            return unreadable(read.error().reason);
        if (*read == 0)
            break;
        for (std::size_t frame = 0; frame < static_cast<std::size_t>(*read); ++frame)
            sound.frames.push_back(mixed(std::span(block).subspan(frame * channels, channels)));
        if (sound.frames.size() > longest)
            return base::fail(u"The audio is longer than five minutes."_s);
    }
    if (sound.frames.empty())
        return base::fail(u"The audio file contains no audio."_s);
    return sound;
}

} // namespace

base::Result<Sound, QString> decodedFile(const QByteArray &bytes) {
    // The decoder needs a file; this one is in memory and has no name.
    QFile file;
    if (!file.open(::memfd_create("recording", MFD_CLOEXEC), QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) ||
        file.write(bytes) != bytes.size() || !file.flush())
        return unreadable(file.errorString());
    return decoded(u"/proc/self/fd/%1"_s.arg(file.handle()));
}

base::Result<Sound, QString> decodedPcm16(const QByteArray &bytes) {
    Sound sound{{}, 16000};
    if (static_cast<double>(bytes.size()) / 2.0 > longestRecordingSeconds * sound.rate)
        return base::fail(u"The audio is longer than five minutes."_s);
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2)
        sound.frames.push_back(static_cast<float>(qFromLittleEndian<qint16>(bytes.constData() + at)) / 32768.0F);
    if (sound.frames.empty())
        return base::fail(u"The audio file contains no audio."_s);
    return sound;
}

} // namespace orlenta::localvoices
