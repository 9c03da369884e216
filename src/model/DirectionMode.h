#pragma once

namespace orlenta::model {

/// What a line is generated from: its text, or a direction recording.
enum class DirectionMode { Text, Voice };

} // namespace orlenta::model
