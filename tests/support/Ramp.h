#pragma once

#include <cmath>
#include <optional>
#include <vector>

#include <QtCore/QUrl>

#include "audio/files/WavFileWriter.h"

namespace orlenta::testing {

/// A signal in which each sample value is unique to its frame; exact in 24-bit files and 32-bit floats.
class Ramp final {
public:
    static constexpr int rate = 48000;
    /// Longer ramps would exceed full scale.
    static constexpr int mostFrames = 260000;

    /// Writes a mono 24-bit WAV and returns its URL, which is empty on failure.
    [[nodiscard]] static QUrl write(const QString &path, int frames) {
        std::vector<double> samples(static_cast<std::size_t>(frames));
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<double>(i + 1) * step;
        auto writer = audio::WavFileWriter::create(path, {rate, 1, 24});
        return writer && writer.value().writeFrames(std::span<const double>(samples)) && writer.value().finish()
                   ? QUrl::fromLocalFile(path)
                   : QUrl();
    }

    /// The first and last frame of an uninterrupted, unmodified stretch.
    struct Stretch {
        std::optional<int> first;
        std::optional<int> last;
    };
    /// The first such stretch in a stereo recording.
    [[nodiscard]] static Stretch firstStretch(const std::vector<float> &recording) {
        Stretch found;
        for (std::size_t i = 0; i < recording.size(); i += 2) {
            const std::optional<int> frame = frameOf(recording[i]);
            if (!found.first)
                found = {frame, frame};
            else if (frame == *found.last + 1)
                found.last = frame;
            else if (*found.last - *found.first < chanceRun)
                found = {frame, frame};
            else
                break;
        }
        return found;
    }

private:
    /// A faded sample can look like a frame by chance, but not several in a row.
    static constexpr int chanceRun = 3;
    static constexpr double step = 32.0 / 8388608.0;

    /// The frame of a recorded sample; none for silence and modified samples.
    static std::optional<int> frameOf(float sample) {
        const double frame = static_cast<double>(sample) / step;
        return sample == 0.0F || frame != std::floor(frame) ? std::nullopt : std::optional(static_cast<int>(frame) - 1);
    }
};

} // namespace orlenta::testing
