#pragma once

#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"
#include "localvoices/voices/SpeechJob.h"

namespace orlenta::localvoices {

/// Speaks a job's line, at the engine's own rate. Once in a process's life: only a fresh process speaks the same line
/// the same way each time. A line with nothing to say gives a moment of silence. The error is a sentence.
[[nodiscard]] base::Result<Sound, QString> spokenLine(const SpeechJob &job);

} // namespace orlenta::localvoices
