#include "localvoices/voices/VoiceShifter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include <rubberband/RubberBandStretcher.h>

namespace orlenta::localvoices {

namespace {

using RubberBand::RubberBandStretcher;

constexpr std::size_t stretcherBlock = 4096;

std::vector<float> stretched(const Sound &sound, double timeRatio, VoiceShift shift) {
    RubberBandStretcher stretcher(static_cast<std::size_t>(sound.rate), 1,
                                  RubberBandStretcher::OptionProcessOffline | RubberBandStretcher::OptionEngineFiner |
                                      RubberBandStretcher::OptionThreadingNever,
                                  timeRatio, shift.pitch);
    // Rubber Band applies the formant scale on top of the pitch scale.
    stretcher.setFormantScale(shift.formants / shift.pitch);
    stretcher.setExpectedInputDuration(sound.frames.size());
    const float *whole = sound.frames.data();
    stretcher.study(&whole, sound.frames.size(), true);

    std::vector<float> result;
    std::vector<float> block(stretcherBlock);
    const auto retrieve = [&] {
        while (stretcher.available() > 0) {
            float *out = block.data();
            const std::size_t wanted = std::min(stretcherBlock, static_cast<std::size_t>(stretcher.available()));
            const std::size_t made = stretcher.retrieve(&out, wanted);
            result.insert(result.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(made));
        }
    };
    for (std::size_t from = 0; from < sound.frames.size(); from += stretcherBlock) {
        const std::size_t count = std::min(stretcherBlock, sound.frames.size() - from);
        const float *in = sound.frames.data() + from;
        stretcher.process(&in, count, from + count == sound.frames.size());
        retrieve();
    }
    retrieve();
    return result;
}

/// The pitch of one window, or 0 if unvoiced.
double windowPitch(const float *frames, std::size_t length, int rate) {
    double energy = 0;
    for (std::size_t i = 0; i < length; ++i)
        energy += static_cast<double>(frames[i]) * static_cast<double>(frames[i]);
    if (energy / static_cast<double>(length) < 1e-5)
        return 0;
    const auto shortest = static_cast<std::size_t>(rate / 400);
    const auto longest = std::min(static_cast<std::size_t>(rate / 60), length / 2);
    double best = 0;
    std::size_t bestLag = 0;
    for (std::size_t lag = shortest; lag <= longest; ++lag) {
        double product = 0;
        double early = 0;
        double late = 0;
        for (std::size_t i = 0; i + lag < length; ++i) {
            const double a = static_cast<double>(frames[i]);
            const double b = static_cast<double>(frames[i + lag]);
            product += a * b;
            early += a * a;
            late += b * b;
        }
        const double likeness = product / std::sqrt(early * late + 1e-12);
        // Multiples of the period correlate just as well, so a longer lag must be clearly better.
        if (likeness > best * 1.05) {
            best = likeness;
            bestLag = lag;
        }
    }
    return best > 0.6 ? static_cast<double>(rate) / static_cast<double>(bestLag) : 0;
}

/// High shelf at 2.5 kHz, after R. Bristow-Johnson's "Cookbook formulae for audio equalizer biquad filter
/// coefficients".
void tilt(Sound &sound, double decibels) {
    if (decibels == 0.0 || sound.rate < 8000)
        return;
    const double a = std::pow(10.0, decibels / 40.0);
    const double w = 2.0 * std::numbers::pi * 2500.0 / static_cast<double>(sound.rate);
    const double alpha = std::sin(w) / 2.0 * std::sqrt(2.0);
    const double c = std::cos(w);
    const double root = 2.0 * std::sqrt(a) * alpha;
    const double a0 = (a + 1) - (a - 1) * c + root;
    const double b0 = a * ((a + 1) + (a - 1) * c + root) / a0;
    const double b1 = -2 * a * ((a - 1) + (a + 1) * c) / a0;
    const double b2 = a * ((a + 1) + (a - 1) * c - root) / a0;
    const double a1 = 2 * ((a - 1) - (a + 1) * c) / a0;
    const double a2 = ((a + 1) - (a - 1) * c - root) / a0;
    double x1 = 0;
    double x2 = 0;
    double y1 = 0;
    double y2 = 0;
    for (float &frame : sound.frames) {
        const double x = static_cast<double>(frame);
        const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
        x2 = std::exchange(x1, x);
        y2 = std::exchange(y1, y);
        frame = static_cast<float>(y);
    }
}

double peakOf(const Sound &sound) {
    float peak = 0;
    for (const float frame : sound.frames)
        peak = std::max(peak, std::abs(frame));
    return static_cast<double>(peak);
}

} // namespace

Sound shifted(const Sound &sound, VoiceShift shift) {
    if (shift.isNone() || sound.frames.empty())
        return sound;
    Sound result{stretched(sound, 1.0, shift), sound.rate};
    result.frames.resize(sound.frames.size(), 0.0F);
    return result;
}

Sound paced(const Sound &sound, double speed) {
    if (speed == 1.0 || sound.frames.empty())
        return sound;
    return {stretched(sound, 1.0 / speed, {}), sound.rate};
}

double middlePitch(const Sound &speech) {
    const Sound sound = speech.atRate(8000).value_or(Sound());
    if (sound.frames.empty())
        return 0;
    const auto window = static_cast<std::size_t>(sound.rate / 25);
    // Two thousand windows are enough for long recordings too.
    const std::size_t step = std::max(window / 2, sound.frames.size() / 2000);
    std::vector<double> pitches;
    for (std::size_t from = 0; from + window <= sound.frames.size(); from += step) {
        const double pitch = windowPitch(sound.frames.data() + from, window, sound.rate);
        if (pitch > 0)
            pitches.push_back(pitch);
    }
    if (pitches.empty())
        return 0;
    const auto middle = pitches.begin() + static_cast<std::ptrdiff_t>(pitches.size() / 2);
    std::nth_element(pitches.begin(), middle, pitches.end());
    return *middle;
}

Sound spokenAs(const VoiceProfile &voice, const Sound &speech) {
    const double pitch = middlePitch(speech);
    // Formants can't be measured independently of the vowels, so estimate them from the pitch: women's are about a
    // sixth higher.
    const double formants = pitch > 155.0 ? 1.16 : 1.0;
    VoiceShift shift;
    if (pitch > 0)
        shift.pitch = std::clamp(voice.pitchHz / pitch, 0.4, 2.5);
    shift.formants = std::clamp(voice.formantScale / formants, 0.7, 1.5);
    const double before = peakOf(speech);
    Sound result = shifted(speech, shift);
    tilt(result, voice.brightnessDb);
    const double after = peakOf(result);
    if (after > 0 && before > 0)
        for (float &frame : result.frames)
            frame = static_cast<float>(static_cast<double>(frame) * before / after);
    return result;
}

} // namespace orlenta::localvoices
