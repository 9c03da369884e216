#pragma once

#include <cstdint>

#include <QtCore/QString>

namespace orlenta::audio {

/// Direction of the sound, as seen from the application.
enum class DeviceDirection { Input, Output };

/// One input or output device.
struct AudioDeviceInfo {
    /// Name shown to the user.
    QString name;
    /// The sink's or source's name on the sound server. Persistent, so preferences store this.
    QString uid;
    /// The server's index, valid until the device disappears. Inputs are numbered separately, so theirs have the
    /// highest bit set.
    std::uint32_t deviceID = 0;

    friend bool operator==(const AudioDeviceInfo &, const AudioDeviceInfo &) = default;
};

} // namespace orlenta::audio
