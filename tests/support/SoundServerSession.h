#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace orlenta::testing {

/// A private sound server with the outputs "spk_a" (48000 Hz, the default) and "spk_b" (44100 Hz), and the input
/// "mic_a", which records whatever is played to "mic_feed". Doesn't touch the machine's own sound.
class SoundServerSession final {
public:
    enum class Kind { PulseAudio, PipeWire };

    /// Records what an output plays, from construction until stop().
    class Recording final {
    public:
        explicit Recording(std::unique_ptr<QProcess> process);
        Recording(Recording &&) noexcept = default;
        ~Recording();
        /// Interleaved samples.
        [[nodiscard]] std::vector<float> stop();

    private:
        std::unique_ptr<QProcess> m_process;
    };

    /// Starts the server and waits for its devices.
    explicit SoundServerSession(Kind kind);
    ~SoundServerSession();

    /// Why the server didn't start; empty on success.
    [[nodiscard]] const QString &failure() const { return m_failure; }
    /// In the form of PULSE_SERVER.
    [[nodiscard]] QString address() const;

    /// Adds an output and returns the module to pass to remove().
    QString addOutput(const QString &name, int rate = 48000);
    void remove(const QString &module);
    /// Runs a program as a client of the server and returns its trimmed output.
    QString run(const QString &program, const QStringList &arguments);
    QString pactl(const QStringList &arguments);
    /// Records an output as 32-bit stereo at `rate` Hz. Recording has begun when this returns.
    [[nodiscard]] Recording record(const QString &output, int rate);
    /// Kills the server, like a crash.
    void kill();
    /// Stops the server from responding until resume().
    void suspend();
    void resume();
    /// Restarts a killed server at the same address.
    void restart();

private:
    void signalAll(int signal);
    void startPulseAudio();
    void startPipeWire();
    void prepare(QProcess &process) const;
    QProcess &start(const QString &program, const QStringList &arguments);
    bool waitFor(const std::function<bool()> &isSo);
    [[nodiscard]] QProcessEnvironment environment() const;

    Kind m_kind;
    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    QString m_failure;
};

} // namespace orlenta::testing
