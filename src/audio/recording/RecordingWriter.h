#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <vector>

#include "audio/files/AudioFileError.h"
#include "audio/files/Resampler.h"
#include "audio/files/WavFileWriter.h"
#include "base/Result.h"

class QObject;

namespace orlenta::audio {

/// Writes recorded samples to a WAV file (44100 Hz, mono, 16 bit) on its own thread, so that a slow disk blocks neither
/// the sound server nor the window. The file is written in place and is readable at any time, even if the process is
/// killed.
class RecordingWriter final {
public:
    static constexpr WavFormat format{44100, 1, 16};

    /// At most one of the two is called, on `receiver`'s thread.
    struct Events {
        QObject *receiver = nullptr;
        /// The file is complete and on disk; `frames` at the file's rate.
        std::function<void(qint64 frames)> finished;
        /// Writing failed. The file keeps what was written before.
        std::function<void(const AudioFileError &error)> failed;
    };

    /// Creates the file. Samples arrive at `inputRate` (Hz) and are resampled if it differs from the file's.
    [[nodiscard]] static base::Result<std::unique_ptr<RecordingWriter>, AudioFileError>
    create(const QString &path, double inputRate, Events events);
    /// Waits until all appended samples have been written.
    ~RecordingWriter();
    RecordingWriter(const RecordingWriter &) = delete;
    RecordingWriter &operator=(const RecordingWriter &) = delete;

    /// Mono samples, full scale ±1. One thread at a time; never waits for the disk.
    void append(std::span<const float> samples);
    void appendSilence(std::size_t frames);
    /// Completes the file after the last sample.
    void finish();

private:
    RecordingWriter(WavFileWriter file, std::optional<Resampler> resampler, Events events);

    using Outcome = base::Result<void, AudioFileError>;

    void run();
    [[nodiscard]] Outcome writeAll();
    [[nodiscard]] Outcome write(std::span<const float> samples);
    [[nodiscard]] Outcome drain();

    WavFileWriter m_file;
    std::optional<Resampler> m_resampler;
    std::vector<double> m_input;
    std::vector<double> m_output;
    Events m_events;

    std::mutex m_guard;
    std::condition_variable m_wake;
    std::vector<float> m_pending;
    bool m_isFinishing = false;
    bool m_isBroken = false;

    std::thread m_thread;
};

} // namespace orlenta::audio
