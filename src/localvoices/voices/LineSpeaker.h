#pragma once

#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"
#include "localvoices/voices/SpeechJob.h"

namespace orlenta::localvoices {

/// Limits for one line: seconds of speech, and characters after aliases and phonemes have been applied.
constexpr double longestSpeechSeconds = 3600.0;
constexpr std::size_t mostSpokenCharacters = 100'000;

/// Speaks a job's line at the engine's own rate. Call it once per process: only a fresh process always speaks the same
/// line the same way. A line with nothing to say becomes 0.1 seconds of silence.
[[nodiscard]] base::Result<Sound, JobFailure> spokenLine(const SpeechJob &job);

} // namespace orlenta::localvoices
