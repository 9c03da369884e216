#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QList>

#include "audio/devices/AudioDeviceInfo.h"

namespace orlenta::audio {

class SoundServer;

/// Asks the sound server's table for devices. Never fails and never waits: without a server there are none. Any thread.
class AudioDeviceEnumerator final {
public:
    explicit AudioDeviceEnumerator(const SoundServer &server) : m_server(server) {}

    /// In the server's order. A device without a name or UID is left out.
    [[nodiscard]] QList<AudioDeviceInfo> getAudioDevices(DeviceDirection direction) const;
    [[nodiscard]] bool isDeviceAlive(std::uint32_t deviceID) const;
    /// The id of the first living device of that UID, inputs before outputs.
    [[nodiscard]] std::optional<std::uint32_t> deviceID(const QString &uid) const;

private:
    const SoundServer &m_server;
};

} // namespace orlenta::audio
