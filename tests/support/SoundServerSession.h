#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace orlenta::testing {

/// A private sound server with the outputs "spk_a" (48000 Hz, the default) and "spk_b" (44100 Hz) and the input
/// "mic_a", which hears what is played to "mic_feed". Nothing of the machine's own sound is touched.
class SoundServerSession final {
public:
    enum class Kind { PulseAudio, PipeWire };

    /// What an output plays, from when it was made until stop().
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

    /// Starts the server and waits until its devices stand.
    explicit SoundServerSession(Kind kind);
    ~SoundServerSession();

    /// Why it didn't start; empty when it did.
    [[nodiscard]] const QString &failure() const { return m_failure; }
    /// As PULSE_SERVER has it.
    [[nodiscard]] QString address() const;

    /// Adds an output of that name and rate; gives what removes it.
    QString addOutput(const QString &name, int rate = 48000);
    void remove(const QString &module);
    /// Runs a program as the server's client to its end, and gives what it prints, without the last line end.
    QString run(const QString &program, const QStringList &arguments);
    QString pactl(const QStringList &arguments);
    /// Records what reaches an output, stereo, as 32-bit floats at `rate` Hz. Has begun when it returns.
    [[nodiscard]] Recording record(const QString &output, int rate);
    /// Ends the server, as a crash of it would.
    void kill();
    /// Holds the server still, so that it answers nothing, until resume().
    void suspend();
    void resume();
    /// Starts it again after a kill, at the same address.
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
