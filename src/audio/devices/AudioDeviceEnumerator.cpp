#include "audio/devices/AudioDeviceEnumerator.h"

#include <algorithm>

#include <pulse/def.h>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/SoundServer.h"

namespace orlenta::audio {

QList<AudioDeviceInfo> AudioDeviceEnumerator::getAudioDevices(DeviceDirection direction) const {
    const SoundDeviceTable table = m_server.devices();
    QList<AudioDeviceInfo> found;
    for (const SoundDevice &device : direction == DeviceDirection::Input ? table.inputs : table.outputs)
        if (!device.info.name.isEmpty() && !device.info.uid.isEmpty())
            found.append(device.info);
    return found;
}

bool AudioDeviceEnumerator::isDeviceAlive(std::uint32_t deviceID) const {
    const SoundDeviceTable table = m_server.devices();
    const auto isIt = [&](const SoundDevice &device) { return device.info.deviceID == deviceID; };
    if (std::any_of(table.inputs.cbegin(), table.inputs.cend(), isIt) ||
        std::any_of(table.outputs.cbegin(), table.outputs.cend(), isIt))
        return true;
    AudioDebugLogger::log(
        QStringLiteral("AudioDeviceEnumerator.isDeviceAlive failed for deviceID=%1, status=%2")
            .arg(deviceID)
            .arg(m_server.state() == SoundServer::State::Ready ? PA_ERR_NOENTITY : PA_ERR_CONNECTIONREFUSED));
    return false;
}

std::optional<std::uint32_t> AudioDeviceEnumerator::deviceID(const QString &uid) const {
    for (const AudioDeviceInfo &device :
         getAudioDevices(DeviceDirection::Input) + getAudioDevices(DeviceDirection::Output))
        if (device.uid == uid)
            return isDeviceAlive(device.deviceID) ? std::optional(device.deviceID) : std::nullopt;
    return {};
}

} // namespace orlenta::audio
