#pragma once

#include <QtCore/QString>

namespace orlenta::controller {

/// Which of a line's two kinds of audio: what was generated, or the recording that directs it.
enum class AudioKind { Generated, SourceRecording };

/// The kind's folder below the project folder, "Audio Files/Generated" or "Audio Files/Recordings".
[[nodiscard]] QString audioKindPath(AudioKind kind);

} // namespace orlenta::controller
