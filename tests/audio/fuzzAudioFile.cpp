#include <cstdint>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <QtCore/QString>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/files/Mp3Tag.h"
#include "audio/files/WavHeader.h"

namespace audio = orlenta::audio;

namespace {

constexpr qint64 enoughFrames = 1'000'000;

void readConverted(audio::AudioFileReader reader) {
    auto converted = audio::ConvertingReader::create(reader, 48000.0, 1);
    if (!converted)
        return;
    std::vector<double> block(4096);
    for (auto read = converted.value().readFrames(block); read && *read > 0;
         read = converted.value().readFrames(block)) {
        if (reader.framePosition() > enoughFrames)
            return;
    }
}

} // namespace

// Any bytes as an audio file: the parsers of our own, and the reader over the decoders, must end without a fault.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    const QByteArrayView view(bytes, static_cast<qsizetype>(size));
    (void)audio::Mp3Tag::parse(view);
    (void)audio::Mp3Tag::id3Size(view);
    const int descriptor = ::memfd_create("fuzzed", MFD_CLOEXEC);
    if (descriptor < 0 || ::write(descriptor, bytes, size) != static_cast<ssize_t>(size))
        return 0;
    if (const auto layout = audio::WavLayout::read(descriptor, static_cast<qint64>(size)))
        Q_ASSERT(layout->dataOffset + layout->dataBytes <= static_cast<qint64>(size));
    auto reader = audio::AudioFileReader::open(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    if (reader)
        readConverted(std::move(reader).value());
    ::close(descriptor);
    return 0;
}
