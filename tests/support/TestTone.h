#pragma once

#include <cmath>
#include <numbers>
#include <vector>

#include <QtCore/QUrl>

#include "audio/files/WavFileWriter.h"

namespace orlenta::testing {

/// Writes a mono 16-bit WAV with a tone at half full scale and returns its URL.
inline QUrl writeTone(const QString &path, double seconds, int rate = 48000, double frequency = 440.0) {
    std::vector<double> samples(static_cast<std::size_t>(seconds * rate));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = 0.5 * std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(i) / rate);
    auto writer = audio::WavFileWriter::create(path, {static_cast<quint32>(rate), 1, 16},
                                               audio::WavFileWriter::Placement::RenamedUnflushed);
    const bool isWritten =
        writer && writer.value().writeFrames(std::span<const double>(samples)) && writer.value().finish();
    return isWritten ? QUrl::fromLocalFile(path) : QUrl();
}

} // namespace orlenta::testing
