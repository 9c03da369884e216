#include "audio/files/ConvertingReader.h"

#include <algorithm>
#include <cmath>

namespace orlenta::audio {

ConvertingReader::ConvertingReader(AudioFileReader &source, int channelCount)
    : m_source(&source), m_channelCount(channelCount), m_raw(static_cast<size_t>(blockFrames * source.channelCount())),
      m_mapped(static_cast<size_t>(blockFrames * channelCount)) {}

base::Result<ConvertingReader, AudioFileError> ConvertingReader::create(AudioFileReader &source, double sampleRate,
                                                                        int channelCount) {
    if (!isUsableFormat(sampleRate, channelCount))
        return base::fail(AudioFileError{AudioFileError::Kind::ConversionFailed, source.path(), {}});
    ConvertingReader reader(source, channelCount);
    if (source.sampleRate() != sampleRate) {
        auto resampler = Resampler::create(source.sampleRate(), sampleRate, channelCount);
        if (!resampler)
            return base::fail(AudioFileError{resampler.error().kind, source.path(), resampler.error().reason});
        reader.m_resampler = std::move(resampler).value();
    }
    return reader;
}

qsizetype ConvertingReader::outputCapacity(double inputRate, double outputRate) {
    constexpr qsizetype spareFrames = 1024;
    return static_cast<qsizetype>(std::ceil(outputRate / inputRate * static_cast<double>(blockFrames))) + spareFrames;
}

void ConvertingReader::mapChannels(std::span<const double> from, std::span<double> to) const {
    const auto sources = static_cast<size_t>(m_source->channelCount());
    const auto targets = static_cast<size_t>(m_channelCount);
    const size_t frames = from.size() / sources;
    for (size_t frame = 0; frame < frames; ++frame) {
        const auto in = from.subspan(frame * sources, sources);
        const auto out = to.subspan(frame * targets, targets);
        for (size_t target = 0; target < targets; ++target) {
            double sum = sources == 1 ? in[0] : 0.0;
            size_t count = 1;
            for (size_t source = target; sources > 1 && source < sources; source += targets) {
                sum += in[source];
                count = source / targets + 1;
            }
            out[target] = sum / static_cast<double>(count);
        }
    }
}

base::Result<void, AudioFileError> ConvertingReader::readBlock(qsizetype mostFrames) {
    const bool isSameCount = m_source->channelCount() == m_channelCount;
    const auto wanted = static_cast<size_t>(std::min(mostFrames, blockFrames) * m_source->channelCount());
    const auto read = m_source->readFrames(std::span(isSameCount ? m_mapped : m_raw).first(wanted));
    if (!read)
        return base::fail(read.error());
    m_hasEnded = *read == 0;
    if (!isSameCount)
        mapChannels(std::span<const double>(m_raw).first(static_cast<size_t>(*read * m_source->channelCount())),
                    m_mapped);
    m_pendingStart = 0;
    m_pendingEnd = static_cast<size_t>(*read * m_channelCount);
    return {};
}

std::span<const double> ConvertingReader::pending() const {
    return std::span(m_mapped).subspan(m_pendingStart, m_pendingEnd - m_pendingStart);
}

base::Result<qsizetype, AudioFileError> ConvertingReader::readFrames(std::span<double> samples) {
    const auto channels = static_cast<size_t>(m_channelCount);
    if (!m_resampler) {
        if (const auto read = readBlock(static_cast<qsizetype>(samples.size() / channels)); !read)
            return base::fail(read.error());
        std::ranges::copy(pending(), samples.begin());
        return static_cast<qsizetype>(m_pendingEnd / channels);
    }
    while (!m_hasEnded) {
        if (m_pendingStart == m_pendingEnd) {
            if (const auto read = readBlock(blockFrames); !read)
                return base::fail(read.error());
            continue;
        }
        const auto progress = m_resampler->process(pending(), samples);
        if (!progress)
            return base::fail(progress.error());
        m_pendingStart += static_cast<size_t>(progress->framesConsumed) * channels;
        if (progress->framesProduced > 0)
            return progress->framesProduced;
    }
    return m_resampler->drain(samples);
}

} // namespace orlenta::audio
