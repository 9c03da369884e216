#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "audio/devices/AudioDeviceEnumerator.h"

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::audio {

/// The device lists for the user interface. They follow the server's with a short delay, so that a burst of changes
/// causes one update. One instance, owned by the application. Main thread.
class AudioDeviceMonitor final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds debounce{200};

    AudioDeviceMonitor(const SoundServer &server, const base::UserDefaults &defaults, QObject *parent = nullptr);
    ~AudioDeviceMonitor() override;

    [[nodiscard]] const QList<AudioDeviceInfo> &inputDevices() const { return m_inputDevices; }
    [[nodiscard]] const QList<AudioDeviceInfo> &outputDevices() const { return m_outputDevices; }
    [[nodiscard]] bool isInputAvailable(const QString &uid) const;
    [[nodiscard]] bool isOutputAvailable(const QString &uid) const;
    /// The numeric id for a stored UID, or nothing if the device isn't there. Checks the published lists first.
    [[nodiscard]] std::optional<std::uint32_t> deviceID(const QString &uid) const;

    /// Updates the lists immediately. `reason` is for the log.
    void refresh(const QString &reason);
    void refreshSelectedInputAvailability(const QString &reason);
    void refreshSelectedOutputAvailability(const QString &reason);

Q_SIGNALS:
    void inputDevicesChanged();
    void outputDevicesChanged();
    /// Emitted after every refresh, even if nothing changed.
    void refreshed(const QString &reason);

private:
    /// Result of the last availability check of one direction's chosen device; empty before the first.
    struct Availability {
        std::optional<QString> uid;
        std::optional<bool> isAvailable;
    };
    /// Log messages for a change; "%1" stands for the UID.
    struct ChangeLines {
        QString becameAvailable;
        QString becameUnavailable;
    };
    void update(Availability &last, const QString &uid, bool isAvailable, const QString &reason,
                const ChangeLines &lines) const;

    const SoundServer &m_server;
    const base::UserDefaults &m_defaults;
    AudioDeviceEnumerator m_enumerator;
    QList<AudioDeviceInfo> m_inputDevices;
    QList<AudioDeviceInfo> m_outputDevices;
    QTimer m_debounce;
    Availability m_lastInput;
    Availability m_lastOutput;
};

} // namespace orlenta::audio
