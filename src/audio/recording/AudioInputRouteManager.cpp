#include "audio/recording/AudioInputRouteManager.h"

#include <algorithm>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/DefaultSource.h"
#include "base/UserDefaults.h"

namespace orlenta::audio {

namespace {

constexpr int noSuchDevice = -1;

} // namespace

AudioInputRouteManager::AudioInputRouteManager(SoundServer &server, base::UserDefaults &defaults, QObject *parent)
    : QObject(parent), m_server(server), m_defaults(defaults), m_enumerator(server) {}

void AudioInputRouteManager::followRefreshes(const AudioDeviceMonitor &monitor) {
    connect(&monitor, &AudioDeviceMonitor::refreshed, this, [this](const QString &reason) {
        restorePendingDefaultInputIfNeeded(QStringLiteral("AudioDeviceMonitor refresh ") + reason);
    });
}

std::optional<AudioDeviceInfo> AudioInputRouteManager::findInput(const QString &uid) const {
    for (const AudioDeviceInfo &device : m_enumerator.getAudioDevices(DeviceDirection::Input))
        if (device.uid == uid)
            return device;
    return {};
}

std::optional<AudioDeviceInfo> AudioInputRouteManager::findInput(std::uint32_t deviceID) const {
    for (const AudioDeviceInfo &device : m_enumerator.getAudioDevices(DeviceDirection::Input))
        if (device.deviceID == deviceID)
            return device;
    return {};
}

std::optional<AudioDeviceInfo> AudioInputRouteManager::selectedInputDevice() const {
    return findInput(m_defaults.inputDeviceUID());
}

void AudioInputRouteManager::logSelectedInputDevice(const QString &context) const {
    const QString uid = m_defaults.inputDeviceUID();
    const std::optional<AudioDeviceInfo> device = selectedInputDevice();
    AudioDebugLogger::log(QStringLiteral("%1 selected input: uid=%2, name=%3")
                              .arg(context, uid.isEmpty() ? QStringLiteral("system default") : uid,
                                   device ? device->name : QStringLiteral("none")));
}

std::optional<std::uint32_t> AudioInputRouteManager::currentDefaultInputDevice() const {
    const std::optional<AudioDeviceInfo> device = findInput(m_server.devices().defaultInputUID);
    return device ? std::optional(device->deviceID) : std::nullopt;
}

base::Result<void, DefaultSourceFailure> AudioInputRouteManager::setDefaultInputDevice(std::uint32_t deviceID,
                                                                                       const QString &context) {
    AudioDebugLogger::log(
        QStringLiteral("AudioObjectSetPropertyData(kAudioHardwarePropertyDefaultInputDevice) from %1").arg(context));
    const std::optional<AudioDeviceInfo> device = findInput(deviceID);
    const base::Result<void, DefaultSourceFailure> changed =
        device ? setDefaultSource(m_server, device->uid.toUtf8())
               : base::fail(DefaultSourceFailure{DefaultSourceFailure::Kind::Refused, noSuchDevice});
    if (!changed)
        AudioDebugLogger::log(
            QStringLiteral("AudioRecorder failed setting system default input device to %1, status=%2")
                .arg(deviceID)
                .arg(changed.error().status));
    return changed;
}

std::optional<AppliedInputRoute> AudioInputRouteManager::applySelectedInputDeviceForRecording() {
    const auto refuse = [](const QString &message) {
        AudioDebugLogger::log(message);
        return std::nullopt;
    };
    const QString uid = m_defaults.inputDeviceUID();
    if (uid.isEmpty())
        return refuse(QStringLiteral("AudioRecorder using system default input - no UID persisted"));
    const std::optional<AudioDeviceInfo> target = findInput(uid);
    if (!target)
        return refuse(QStringLiteral("AudioRecorder chosen input device not found in current device list, falling "
                                     "back to system default: uid=%1")
                          .arg(uid));
    const std::optional<std::uint32_t> current = currentDefaultInputDevice();
    if (!current)
        return refuse(QStringLiteral("AudioRecorder could not read current system default input, falling back to "
                                     "system default without changing routing"));
    const AudioDeviceInfo previous =
        findInput(*current).value_or(AudioDeviceInfo{QStringLiteral("Unknown input device"), {}, *current});
    const auto ofTarget = [&](const QString &line) {
        return line.arg(target->uid, target->name).arg(target->deviceID);
    };
    if (target->deviceID == *current)
        return refuse(ofTarget(QStringLiteral(
            "AudioRecorder selected input is already the system default: uid=%1, name=%2, audioDeviceID=%3")));
    if (previous.uid.isEmpty())
        return refuse(QStringLiteral("AudioRecorder could not resolve current default input UID, falling back without "
                                     "changing routing"));
    AudioDebugLogger::log(
        ofTarget(QStringLiteral("AudioRecorder applying input device: uid=%1, name=%2, audioDeviceID=%3")));
    if (!m_defaults.setPendingInputRouteRestoreDeviceUID(previous.uid)) {
        // It isn't on disk but still in memory, and the next refresh would take it for a change to undo.
        m_defaults.setPendingInputRouteRestoreDeviceUID({});
        return refuse(
            QStringLiteral("AudioRecorder could not note the way back, falling back without changing routing"));
    }
    const auto changed =
        setDefaultInputDevice(target->deviceID, QStringLiteral("AudioRecorder.applySelectedInputDeviceForRecording"));
    if (!changed) {
        // If the server didn't answer in time it may still make the change; then the next refresh must undo it.
        if (changed.error().kind == DefaultSourceFailure::Kind::Refused)
            m_defaults.setPendingInputRouteRestoreDeviceUID({});
        return refuse(QStringLiteral("AudioRecorder failed to apply chosen input device, falling back to previous "
                                     "system default: uid=%1")
                          .arg(uid));
    }
    ++m_activeRoutes;
    return AppliedInputRoute{previous.deviceID, previous.name, previous.uid,
                             target->deviceID,  target->name,  target->uid};
}

std::optional<std::uint32_t> AudioInputRouteManager::resolvePrevious(const AppliedInputRoute &route) const {
    const QString &uid = route.previousDeviceUID;
    if (const std::optional<AudioDeviceInfo> device = findInput(uid)) {
        AudioDebugLogger::log(
            QStringLiteral("AudioRecorder restore resolved previous input by UID: uid=%1, audioDeviceID=%2")
                .arg(uid)
                .arg(device->deviceID));
        return device->deviceID;
    }
    if (findInput(route.previousDeviceID)) {
        AudioDebugLogger::log(QStringLiteral("AudioRecorder restore falling back to previous raw AudioDeviceID: "
                                             "uid=%1, audioDeviceID=%2")
                                  .arg(uid)
                                  .arg(route.previousDeviceID));
        return route.previousDeviceID;
    }
    AudioDebugLogger::log(
        QStringLiteral("AudioRecorder restore could not resolve previous input by UID or alive raw ID: uid=%1")
            .arg(uid));
    return {};
}

void AudioInputRouteManager::restoreAppliedInputRoute(const AppliedInputRoute &route, const QString &context) {
    AudioDebugLogger::log(
        QStringLiteral("AudioRecorder restoring previous system default input: was=%1, uid=%2, context=%3")
            .arg(route.previousDeviceName, route.previousDeviceUID, context));
    if (const std::optional<std::uint32_t> previous = resolvePrevious(route)) {
        if (setDefaultInputDevice(*previous, QStringLiteral("AudioRecorder.restoreAppliedInputRoute")))
            m_defaults.setPendingInputRouteRestoreDeviceUID({});
        else
            AudioDebugLogger::log(
                QStringLiteral("AudioRecorder failed to restore previous system default input after %1").arg(context));
    }
    markAppliedInputRouteInactive();
}

void AudioInputRouteManager::markAppliedInputRouteInactive() {
    m_activeRoutes = std::max(m_activeRoutes - 1, 0);
    AudioDebugLogger::log(QStringLiteral("AudioRecorder active applied input routes count=%1").arg(m_activeRoutes));
}

void AudioInputRouteManager::restorePendingDefaultInputIfNeeded(const QString &context) {
    const QString uid = m_defaults.pendingInputRouteRestoreDeviceUID();
    if (uid.isEmpty())
        return;
    if (m_activeRoutes > 0) {
        AudioDebugLogger::log(QStringLiteral("AudioRecorder pending input route restore skipped during %1: active "
                                             "recording route is live")
                                  .arg(context));
        return;
    }
    AudioDebugLogger::log(
        QStringLiteral("AudioRecorder pending input route restore found during %1: uid=%2").arg(context, uid));
    const std::optional<AudioDeviceInfo> device = findInput(uid);
    if (!device) {
        AudioDebugLogger::log(
            QStringLiteral("AudioRecorder pending input route restore device missing; keeping pending restore uid=%1")
                .arg(uid));
        return;
    }
    if (!setDefaultInputDevice(device->deviceID, QStringLiteral("AudioRecorder.restorePendingDefaultInputIfNeeded"))) {
        AudioDebugLogger::log(
            QStringLiteral("AudioRecorder failed to restore pending system default input; keeping pending restore "
                           "uid=%1")
                .arg(uid));
        return;
    }
    AudioDebugLogger::log(QStringLiteral("AudioRecorder restored pending system default input after prior unclean "
                                         "exit: uid=%1, name=%2, audioDeviceID=%3")
                              .arg(uid, device->name)
                              .arg(device->deviceID));
    m_defaults.setPendingInputRouteRestoreDeviceUID({});
}

} // namespace orlenta::audio
