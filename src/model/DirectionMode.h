#pragma once

namespace orlenta::model {

/// What a line is spoken from: its text, or a direction recording.
enum class DirectionMode { Text, Voice };

} // namespace orlenta::model
