#pragma once

#include <QtCore/QString>

namespace orlenta::controller {

/// A line's two kinds of audio: generated takes, and recordings that direct the delivery.
enum class AudioKind { Generated, SourceRecording };

/// The kind's folder below the project folder, "Audio Files/Generated" or "Audio Files/Recordings".
[[nodiscard]] QString audioKindPath(AudioKind kind);

} // namespace orlenta::controller
