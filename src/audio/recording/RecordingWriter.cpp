#include "audio/recording/RecordingWriter.h"

#include <utility>

#include <QtCore/QMetaObject>
#include <QtCore/QObject>

#include "audio/files/SampleCleaning.h"

namespace orlenta::audio {

namespace {

constexpr std::size_t convertedBlockFrames = 4096;

} // namespace

base::Result<std::unique_ptr<RecordingWriter>, AudioFileError>
RecordingWriter::create(const QString &path, double inputRate, Events events) {
    std::optional<Resampler> resampler;
    if (inputRate != format.sampleRate) {
        auto made = Resampler::create(inputRate, format.sampleRate, format.channelCount);
        if (!made)
            return base::fail(made.error());
        resampler = std::move(made).value();
    }
    auto file = WavFileWriter::create(path, format, WavFileWriter::Placement::InPlace);
    if (!file)
        return base::fail(file.error());
    std::unique_ptr<RecordingWriter> writer(
        new RecordingWriter(std::move(file).value(), std::move(resampler), std::move(events)));
    writer->m_thread = std::thread(&RecordingWriter::run, writer.get());
    return writer;
}

RecordingWriter::RecordingWriter(WavFileWriter file, std::optional<Resampler> resampler, Events events)
    : m_file(std::move(file)), m_resampler(std::move(resampler)), m_output(convertedBlockFrames),
      m_events(std::move(events)) {}

RecordingWriter::~RecordingWriter() {
    finish();
    m_thread.join();
}

void RecordingWriter::append(std::span<const float> samples) {
    {
        const std::lock_guard guard(m_guard);
        if (m_isBroken || m_isFinishing)
            return;
        m_pending.insert(m_pending.end(), samples.begin(), samples.end());
    }
    m_wake.notify_one();
}

void RecordingWriter::appendSilence(std::size_t frames) {
    {
        const std::lock_guard guard(m_guard);
        if (m_isBroken || m_isFinishing)
            return;
        m_pending.insert(m_pending.end(), frames, 0.0F);
    }
    m_wake.notify_one();
}

void RecordingWriter::finish() {
    {
        const std::lock_guard guard(m_guard);
        m_isFinishing = true;
    }
    m_wake.notify_one();
}

void RecordingWriter::run() {
    const Outcome written = writeAll();
    if (written) {
        QMetaObject::invokeMethod(
            m_events.receiver, [finished = m_events.finished, frames = m_file.framesWritten()] { finished(frames); },
            Qt::QueuedConnection);
        return;
    }
    {
        const std::lock_guard guard(m_guard);
        m_isBroken = true;
        m_pending.clear();
    }
    // Write the real length into the header, so that other programs can read the file too. The failure has been noted
    // already; a second one adds nothing.
    static_cast<void>(m_file.finish());
    QMetaObject::invokeMethod(
        m_events.receiver, [failed = m_events.failed, error = written.error()] { failed(error); },
        Qt::QueuedConnection);
}

RecordingWriter::Outcome RecordingWriter::writeAll() {
    std::vector<float> block;
    for (bool isLast = false; !isLast;) {
        block.clear();
        {
            std::unique_lock lock(m_guard);
            m_wake.wait(lock, [this] { return !m_pending.empty() || m_isFinishing; });
            block.swap(m_pending);
            isLast = m_isFinishing;
        }
        if (auto written = write(block); !written)
            return written;
    }
    if (auto drained = drain(); !drained)
        return drained;
    return m_file.finish();
}

RecordingWriter::Outcome RecordingWriter::write(std::span<const float> samples) {
    if (!m_resampler)
        return m_file.writeFrames(samples);
    m_input.assign(samples.begin(), samples.end());
    silenceNonSound(std::span(m_input));
    for (std::span<const double> rest(m_input); !rest.empty();) {
        const auto progress = m_resampler->process(rest, m_output);
        if (!progress)
            return base::fail(progress.error());
        const auto produced = static_cast<std::size_t>(progress->framesProduced);
        if (auto written = m_file.writeFrames(std::span<const double>(m_output).first(produced)); !written)
            return written;
        rest = rest.subspan(static_cast<std::size_t>(progress->framesConsumed));
    }
    return {};
}

RecordingWriter::Outcome RecordingWriter::drain() {
    while (m_resampler) {
        const auto produced = m_resampler->drain(m_output);
        if (!produced)
            return base::fail(produced.error());
        if (*produced == 0)
            break;
        const auto frames = std::span<const double>(m_output).first(static_cast<std::size_t>(*produced));
        if (auto written = m_file.writeFrames(frames); !written)
            return written;
    }
    return {};
}

} // namespace orlenta::audio
