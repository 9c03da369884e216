#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QString>

#include "audio/devices/AudioDeviceEnumerator.h"
#include "audio/recording/DefaultSource.h"
#include "base/Result.h"

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::audio {

class AudioDeviceMonitor;
class SoundServer;

/// A change of the system's default input, with everything needed to undo it.
struct AppliedInputRoute {
    std::uint32_t previousDeviceID = 0;
    QString previousDeviceName;
    QString previousDeviceUID;
    std::uint32_t targetDeviceID = 0;
    QString targetDeviceName;
    QString targetDeviceUID;
};

/// Changes the system's default input for the duration of a take, then restores it. Stores the previous default's UID
/// on disk before the change and keeps it there until that input is the default again, so that neither a crash nor an
/// unplugged device leaves the user on the wrong microphone. One instance per application, because only one UID can be
/// stored. Main thread.
class AudioInputRouteManager final : public QObject {
    Q_OBJECT
public:
    AudioInputRouteManager(SoundServer &server, base::UserDefaults &defaults, QObject *parent = nullptr);

    /// Retries a pending restore at every refresh of the device list, in case the missing device is back.
    void followRefreshes(const AudioDeviceMonitor &monitor);

    /// The chosen input, if it exists.
    [[nodiscard]] std::optional<AudioDeviceInfo> selectedInputDevice() const;
    void logSelectedInputDevice(const QString &context) const;
    [[nodiscard]] std::optional<std::uint32_t> currentDefaultInputDevice() const;
    /// Returns success once the device is the default.
    base::Result<void, DefaultSourceFailure> setDefaultInputDevice(std::uint32_t deviceID, const QString &context);

    /// Makes the chosen input the default. Returns nothing if nothing was changed, so there is nothing to restore.
    [[nodiscard]] std::optional<AppliedInputRoute> applySelectedInputDeviceForRecording();
    void restoreAppliedInputRoute(const AppliedInputRoute &route, const QString &context);
    void markAppliedInputRouteInactive();
    /// Restores a default that an earlier run left changed or that a missing device kept from being restored. `context`
    /// is for the log.
    void restorePendingDefaultInputIfNeeded(const QString &context);

private:
    [[nodiscard]] std::optional<AudioDeviceInfo> findInput(const QString &uid) const;
    [[nodiscard]] std::optional<AudioDeviceInfo> findInput(std::uint32_t deviceID) const;
    [[nodiscard]] std::optional<std::uint32_t> resolvePrevious(const AppliedInputRoute &route) const;

    SoundServer &m_server;
    base::UserDefaults &m_defaults;
    AudioDeviceEnumerator m_enumerator;
    int m_activeRoutes = 0;
};

} // namespace orlenta::audio
