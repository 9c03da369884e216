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

/// Puts what an input delivers into a WAV file of 44100 Hz, mono, 16 bit, on a thread of its own, so that a slow disk
/// holds up neither the sound server nor the window. The file lies at its name from the start and can be read at any
/// time, also when the process is killed.
class RecordingWriter final {
public:
    static constexpr WavFormat format{44100, 1, 16};

    /// At most one of the two comes, on `receiver`'s thread.
    struct Events {
        QObject *receiver = nullptr;
        /// The file is complete and on disk; `frames` of its own rate.
        std::function<void(qint64 frames)> finished;
        /// The disk took no more. What went before stays in the file.
        std::function<void(const AudioFileError &error)> failed;
    };

    /// Makes the file. `inputRate` in Hz, of the samples that will come; another rate than the file's is converted.
    [[nodiscard]] static base::Result<std::unique_ptr<RecordingWriter>, AudioFileError>
    create(const QString &path, double inputRate, Events events);
    /// Waits until what was appended is in the file.
    ~RecordingWriter();
    RecordingWriter(const RecordingWriter &) = delete;
    RecordingWriter &operator=(const RecordingWriter &) = delete;

    /// Mono samples, full scale ±1. Any thread, one at a time; never waits for the disk.
    void append(std::span<const float> samples);
    void appendSilence(std::size_t frames);
    /// No more comes; completes the file.
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
