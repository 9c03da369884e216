#include "audio/files/Waveform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "audio/files/AudioFileReader.h"
#include "audio/files/FrameCount.h"

namespace orlenta::audio {
namespace {

constexpr qint64 waveformBlockFrames = 16384;

// Several independent running peaks let the compiler vectorise the loop.
float firstChannelPeak(std::span<const float> samples, size_t channels) {
    constexpr size_t lanes = 8;
    std::array<float, lanes> peaks{};
    const size_t whole = channels == 1 ? samples.size() / lanes * lanes : 0;
    for (size_t i = 0; i < whole; i += lanes) {
        for (size_t lane = 0; lane < lanes; ++lane) {
            const float value = std::abs(samples[i + lane]);
            peaks[lane] = peaks[lane] < value ? value : peaks[lane];
        }
    }
    float peak = *std::ranges::max_element(peaks);
    for (size_t i = whole; i < samples.size(); i += channels)
        peak = std::max(peak, std::abs(samples[i]));
    return peak;
}

// Block and bar boundaries don't coincide, so a bar's peak carries over to the next block.
void raisePeaks(std::span<const float> block, size_t channels, qint64 firstFrame, qint64 framesPerBar,
                QList<float> &bars) {
    const auto frames = static_cast<qint64>(block.size() / channels);
    for (qint64 frame = 0; frame < frames;) {
        const qint64 bar = (firstFrame + frame) / framesPerBar;
        if (bar >= bars.size())
            return;
        const qint64 end = std::min(frames, (bar + 1) * framesPerBar - firstFrame);
        const auto stretch =
            block.subspan(static_cast<size_t>(frame) * channels, static_cast<size_t>(end - frame) * channels);
        bars[bar] = std::max(bars[bar], firstChannelPeak(stretch, channels));
        frame = end;
    }
}

void normalise(QList<float> &bars) {
    const float loudest = *std::ranges::max_element(bars);
    if (loudest <= 0.0F)
        return;
    for (float &bar : bars)
        bar /= loudest;
}

} // namespace

QList<float> extractWaveform(const QUrl &url, int barCount, const std::stop_token &stop) {
    auto reader = AudioFileReader::open(url.toLocalFile());
    const qint64 frames = reader ? countFrames(reader.value(), stop).value_or(0) : 0;
    if (frames <= 0 || barCount <= 0 || !reader.value().seek(0))
        return {};
    const qint64 framesPerBar = std::max<qint64>(1, frames / barCount);
    QList<float> bars(static_cast<qsizetype>(std::min<qint64>(barCount, frames)), 0.0F);
    const auto channels = static_cast<size_t>(reader->channelCount());
    std::vector<float> block(waveformBlockFrames * channels);
    while (!stop.stop_requested()) {
        const qint64 position = reader->framePosition();
        const auto read = reader.value().readFrames(block);
        if (!read)
            return {};
        if (*read == 0) {
            normalise(bars);
            return bars;
        }
        const auto filled = std::span<const float>(block).first(static_cast<size_t>(*read) * channels);
        raisePeaks(filled, channels, position, framesPerBar, bars);
    }
    return {};
}

} // namespace orlenta::audio
