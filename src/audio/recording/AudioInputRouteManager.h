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

/// One change of the system's default input, and the way back.
struct AppliedInputRoute {
    std::uint32_t previousDeviceID = 0;
    QString previousDeviceName;
    QString previousDeviceUID;
    std::uint32_t targetDeviceID = 0;
    QString targetDeviceName;
    QString targetDeviceUID;
};

/// Changes the system's default input for the length of a take and puts it back. The former one's UID is on disk before
/// anything changes and stays there until it is the default again, so that neither a crash nor an unplugged device
/// leaves the user on the wrong microphone. One for the application, since there is room for one UID. Main thread.
class AudioInputRouteManager final : public QObject {
    Q_OBJECT
public:
    AudioInputRouteManager(SoundServer &server, base::UserDefaults &defaults, QObject *parent = nullptr);

    /// Takes up a postponed return at each refresh of the device list, when the missing device may be back.
    void followRefreshes(const AudioDeviceMonitor &monitor);

    /// The chosen input, when it is there.
    [[nodiscard]] std::optional<AudioDeviceInfo> selectedInputDevice() const;
    void logSelectedInputDevice(const QString &context) const;
    [[nodiscard]] std::optional<std::uint32_t> currentDefaultInputDevice() const;
    /// Succeeds once it is the default.
    base::Result<void, DefaultSourceFailure> setDefaultInputDevice(std::uint32_t deviceID, const QString &context);

    /// Makes the chosen input the default. Without a route nothing has changed and there is nothing to restore.
    [[nodiscard]] std::optional<AppliedInputRoute> applySelectedInputDeviceForRecording();
    void restoreAppliedInputRoute(const AppliedInputRoute &route, const QString &context);
    void markAppliedInputRouteInactive();
    /// Puts back what an earlier run, or a device that was missing, left changed. `context` is for the log.
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
