#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QList>

#include "audio/devices/AudioDeviceInfo.h"

namespace orlenta::audio {

class SoundServer;

/// Looks devices up in the sound server's table. Never fails or blocks: without a server there are no devices. Any
/// thread.
class AudioDeviceEnumerator final {
public:
    explicit AudioDeviceEnumerator(const SoundServer &server) : m_server(server) {}

    /// In the server's order. Omits devices without a name or UID.
    [[nodiscard]] QList<AudioDeviceInfo> getAudioDevices(DeviceDirection direction) const;
    [[nodiscard]] bool isDeviceAlive(std::uint32_t deviceID) const;
    /// The id of the first live device with that UID; inputs come before outputs.
    [[nodiscard]] std::optional<std::uint32_t> deviceID(const QString &uid) const;

private:
    const SoundServer &m_server;
};

} // namespace orlenta::audio
