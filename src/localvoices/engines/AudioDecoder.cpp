#include "localvoices/engines/AudioDecoder.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <QtCore/QtEndian>
#include <sndfile.h>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

struct MemoryFile {
    const QByteArray &bytes;
    sf_count_t at = 0;
};

SF_VIRTUAL_IO memoryReading() {
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void *file) -> sf_count_t { return static_cast<MemoryFile *>(file)->bytes.size(); };
    io.seek = [](sf_count_t offset, int whence, void *file) -> sf_count_t {
        auto *memory = static_cast<MemoryFile *>(file);
        const sf_count_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? memory->at : memory->bytes.size();
        memory->at = std::clamp<sf_count_t>(base + offset, 0, memory->bytes.size());
        return memory->at;
    };
    io.read = [](void *to, sf_count_t count, void *file) -> sf_count_t {
        auto *memory = static_cast<MemoryFile *>(file);
        const sf_count_t taken = std::clamp<sf_count_t>(count, 0, memory->bytes.size() - memory->at);
        std::memcpy(to, memory->bytes.constData() + memory->at, static_cast<std::size_t>(taken));
        memory->at += taken;
        return taken;
    };
    io.write = [](const void *, sf_count_t, void *) -> sf_count_t { return 0; };
    io.tell = [](void *file) -> sf_count_t { return static_cast<MemoryFile *>(file)->at; };
    return io;
}

QString tooLong() {
    return u"The audio is longer than five minutes."_s;
}

} // namespace

base::Result<Sound, QString> decodedFile(const QByteArray &bytes) {
    MemoryFile memory{bytes};
    SF_VIRTUAL_IO io = memoryReading();
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE *)> file(sf_open_virtual(&io, SFM_READ, &info, &memory), sf_close);
    if (file == nullptr)
        return base::fail(u"The audio file could not be read: "_s + QString::fromUtf8(sf_strerror(nullptr)));
    if (info.samplerate < 1000 || info.samplerate > 384'000 || info.channels < 1 || info.channels > 64)
        return base::fail(u"The audio file has an unusual sample rate or number of channels."_s);
    Sound sound{{}, info.samplerate};
    const auto longest = static_cast<std::size_t>(longestInputSeconds * info.samplerate);
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> block(4096 * channels);
    // The header's frame count may lie, so the frames are counted as they come.
    while (const sf_count_t read = sf_readf_float(file.get(), block.data(), 4096)) {
        for (std::size_t frame = 0; frame < static_cast<std::size_t>(read); ++frame) {
            float sum = 0;
            for (std::size_t channel = 0; channel < channels; ++channel)
                sum += block[frame * channels + channel];
            sound.frames.push_back(sum / static_cast<float>(channels));
        }
        if (sound.frames.size() > longest)
            return base::fail(tooLong());
    }
    if (sound.frames.empty())
        return base::fail(u"The audio file holds no sound."_s);
    return sound;
}

base::Result<Sound, QString> decodedPcm16(const QByteArray &bytes) {
    Sound sound{{}, 16000};
    if (static_cast<double>(bytes.size()) / 2.0 > longestInputSeconds * sound.rate)
        return base::fail(tooLong());
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2)
        sound.frames.push_back(static_cast<float>(qFromLittleEndian<qint16>(bytes.constData() + at)) / 32768.0F);
    if (sound.frames.empty())
        return base::fail(u"The audio file holds no sound."_s);
    return sound;
}

} // namespace orlenta::localvoices
