#include "audio/files/FrameCount.h"

#include <vector>

#include "audio/files/AudioFileReader.h"

namespace orlenta::audio {
namespace {

constexpr qsizetype countedBlockFrames = 16384;

} // namespace

std::optional<qint64> countFrames(AudioFileReader &reader, const std::stop_token &stop) {
    if (const auto told = reader.toldFrames())
        return told;
    std::vector<float> block(static_cast<size_t>(countedBlockFrames * reader.channelCount()));
    while (!stop.stop_requested()) {
        // Stop counting at a read error: playback won't get further either.
        if (const auto read = reader.readFrames(block); !read || *read == 0)
            return reader.framePosition();
    }
    return std::nullopt;
}

} // namespace orlenta::audio
