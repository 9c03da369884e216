#pragma once

#include <cstdint>

#include <QtCore/QString>

namespace orlenta::audio {

/// Which way sound goes through a device.
enum class DeviceDirection { Input, Output };

/// One device that sound can come from or go to.
struct AudioDeviceInfo {
    /// What the user calls it.
    QString name;
    /// The sink's or source's name at the sound server: what a choice is stored as. Survives unplugging.
    QString uid;
    /// The server's index of it, good until the device goes away; inputs, which are counted apart, have the highest bit
    /// set.
    std::uint32_t deviceID = 0;

    friend bool operator==(const AudioDeviceInfo &, const AudioDeviceInfo &) = default;
};

} // namespace orlenta::audio
