#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "audio/devices/AudioDeviceInfo.h"

struct pa_context;
struct pa_stream;
struct pa_threaded_mainloop;

namespace orlenta::audio {

/// A device as the server last told of it.
struct SoundDevice {
    AudioDeviceInfo info;
    /// Hertz.
    std::uint32_t sampleRate = 0;

    friend bool operator==(const SoundDevice &, const SoundDevice &) = default;
};

/// The server's devices at one moment, in its own order, without monitors of outputs and without the silent stand-in
/// that one server shows when no output is left.
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

/// The process's connection to the sound server: PulseAudio, or PipeWire through the same interface. Made once by the
/// application and handed to whoever plays or records. Without a server it goes on asking for one, so that devices
/// appear when a server does. The server's callbacks run on a thread of libpulse; this object belongs to the main one.
class SoundServer final : public QObject {
    Q_OBJECT
public:
    /// Ready: connected, and the devices have been listed.
    enum class State { Connecting, Ready, Unavailable };

    /// `address` as PULSE_SERVER has it; empty for the user's own server.
    explicit SoundServer(const QString &address = {}, QObject *parent = nullptr);
    ~SoundServer() override;

    /// Any thread.
    [[nodiscard]] State state() const;
    /// The devices as of now; empty without a server. Never waits for the server. Any thread.
    [[nodiscard]] SoundDeviceTable devices() const;

    /// For streams, which are made on the main thread with the loop locked.
    [[nodiscard]] pa_threaded_mainloop *mainloop() const;
    /// Null while there is no connection, which may be from one call to the next: to be asked for once. What it gave
    /// stays there until the event loop is entered again, or for whoever takes a reference. Main thread.
    [[nodiscard]] pa_context *context() const;
    /// Calls `lost` once when the device of a ready stream is removed: with the loop locked, on the server's thread or
    /// right now, but not after the stream has been retired. Call it with the loop locked.
    void watchDevice(const pa_stream *stream, DeviceDirection direction, std::function<void()> lost);
    /// Takes over the reference to a stream that is no longer of use and ends it after `lingering`. With the loop
    /// locked.
    void retire(pa_stream *stream, std::chrono::microseconds lingering);

    /// Whether an output of that name is PipeWire's stand-in while no other is left: it takes streams and plays them to
    /// nobody.
    [[nodiscard]] static bool isStandIn(const char *name);

Q_SIGNALS:
    void stateChanged();
    /// The table differs from the one before.
    void devicesChanged();

private:
    class Link;

    void connectToServer();

    static constexpr std::chrono::milliseconds reconnectInterval{2000};

    QString m_address;
    QTimer m_reconnect;
    std::unique_ptr<Link> m_link;
};

/// Holds libpulse's loop still while it is touched from another thread.
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
