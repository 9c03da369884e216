#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "audio/devices/AudioDeviceInfo.h"
#include "audio/devices/SharedMicrophone.h"

struct pa_context;
struct pa_stream;
struct pa_threaded_mainloop;

namespace orlenta::audio {

/// A device as last reported by the server.
struct SoundDevice {
    AudioDeviceInfo info;
    /// Hertz.
    std::uint32_t sampleRate = 0;

    friend bool operator==(const SoundDevice &, const SoundDevice &) = default;
};

/// A snapshot of the server's devices, in the server's order. Omits output monitors and the dummy output that PipeWire
/// shows when no other is left.
struct SoundDeviceTable {
    QList<SoundDevice> outputs;
    QList<SoundDevice> inputs;
    QString defaultOutputUID;
    QString defaultInputUID;

    [[nodiscard]] const SoundDevice *findOutput(std::uint32_t deviceID) const;
    [[nodiscard]] const SoundDevice *findOutput(const QString &uid) const;
    [[nodiscard]] const SoundDevice *findInput(const QString &uid) const;

    friend bool operator==(const SoundDeviceTable &, const SoundDeviceTable &) = default;
};

/// The process's connection to the sound server: PulseAudio, or PipeWire through the same interface. The application
/// creates one and passes it to everything that plays or records. Without a server it keeps trying to connect. libpulse
/// runs the callbacks on its own thread; this object lives on the main thread.
class SoundServer final : public QObject {
    Q_OBJECT
public:
    /// Ready means connected, with the devices listed.
    enum class State { Connecting, Ready, Unavailable };

    /// `address` has the format of PULSE_SERVER; empty means the user's default server.
    explicit SoundServer(const QString &address = {}, QObject *parent = nullptr);
    ~SoundServer() override;

    /// Any thread.
    [[nodiscard]] State state() const;
    /// The current devices; empty without a server. Never blocks. Any thread.
    [[nodiscard]] SoundDeviceTable devices() const;

    /// Arbitrates between everything that records through this connection. Main thread.
    [[nodiscard]] SharedMicrophone &microphone() { return m_microphone; }

    /// For creating streams, on the main thread with the loop locked.
    [[nodiscard]] pa_threaded_mainloop *mainloop() const;
    /// Null without a connection. The connection can end between two calls, so call this once and keep the result. The
    /// pointer stays valid until control returns to the event loop, or longer if you take a reference. Main thread.
    [[nodiscard]] pa_context *context() const;
    /// Calls `lost` once when the device of a ready stream is removed: with the loop locked, on the server's thread or
    /// right now, but not after the stream has been retired. Call with the loop locked.
    void watchDevice(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost);
    /// Takes over the reference to a stream no longer needed and ends it after `lingering`. Call with the
    /// loop locked.
    void retire(pa_stream *stream, std::chrono::microseconds lingering);

    /// Whether `name` is PipeWire's dummy output, which accepts streams but plays them nowhere. It exists only while
    /// there is no other output.
    [[nodiscard]] static bool isStandIn(const char *name);

Q_SIGNALS:
    void stateChanged();
    /// devices() has changed.
    void devicesChanged();

private:
    class Link;

    void connectToServer();

    static constexpr std::chrono::milliseconds reconnectInterval{2000};
    /// How long to wait for a connection before reporting Unavailable. A server started on demand takes a while.
    static constexpr std::chrono::milliseconds connectPatience{5000};

    SharedMicrophone m_microphone;
    QString m_address;
    QTimer m_reconnect;
    QTimer m_connectDeadline;
    std::unique_ptr<Link> m_link;
};

/// Locks libpulse's loop while another thread uses its objects.
class SoundServerLock final {
public:
    explicit SoundServerLock(pa_threaded_mainloop *mainloop);
    ~SoundServerLock();
    SoundServerLock(const SoundServerLock &) = delete;
    SoundServerLock &operator=(const SoundServerLock &) = delete;

private:
    pa_threaded_mainloop *m_mainloop;
};

} // namespace orlenta::audio
