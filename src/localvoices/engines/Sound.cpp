#include "localvoices/engines/Sound.h"

#include <algorithm>
#include <span>

#include "audio/files/Resampler.h"

namespace orlenta::localvoices {

std::optional<Sound> Sound::atRate(int newRate) const {
    if (rate == newRate || frames.empty())
        return Sound{frames, newRate};
    auto resampler = audio::Resampler::create(rate, newRate, 1);
    if (!resampler)
        return std::nullopt;
    constexpr std::size_t blockFrames = 4096;
    Sound result{{}, newRate};
    result.frames.reserve(static_cast<std::size_t>(seconds() * newRate) + 1);
    std::vector<double> block;
    std::vector<double> converted(blockFrames);
    const auto keep = [&](qsizetype produced) {
        for (const double sample : std::span(converted).first(static_cast<std::size_t>(produced)))
            result.frames.push_back(static_cast<float>(sample));
    };
    for (std::size_t from = 0; from < frames.size();) {
        const auto rest = std::span(frames).subspan(from, std::min(blockFrames, frames.size() - from));
        block.assign(rest.begin(), rest.end());
        const auto progress = resampler.value().process(block, converted);
        if (!progress)
            return std::nullopt;
        from += static_cast<std::size_t>(progress->framesConsumed);
        keep(progress->framesProduced);
    }
    while (true) {
        const auto drained = resampler.value().drain(converted);
        if (!drained)
            return std::nullopt;
        if (*drained == 0)
            return result;
        keep(*drained);
    }
}

} // namespace orlenta::localvoices
