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
    /// Runs pactl and gives what it prints, without the last line end.
    QString pactl(const QStringList &arguments);
    /// Records what reaches an output until `stopRecording`; raw 32-bit floats, stereo, at its rate.
    void startRecording(const QString &output, int rate);
    [[nodiscard]] std::vector<float> stopRecording();
    /// Ends the server, as a crash of it would.
    void kill();
    /// Starts it again after a kill, at the same address.
    void restart();

private:
    void startPulseAudio();
    void startPipeWire();
    QProcess &start(const QString &program, const QStringList &arguments);
    bool waitFor(const std::function<bool()> &isSo);
    [[nodiscard]] QProcessEnvironment environment() const;

    Kind m_kind;
    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    std::unique_ptr<QProcess> m_recorder;
    QString m_failure;
};

} // namespace orlenta::testing
