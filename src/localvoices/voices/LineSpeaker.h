#pragma once

#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/engines/Sound.h"
#include "localvoices/voices/SpeechJob.h"

namespace orlenta::localvoices {

/// The longest speech that is made of one line, in seconds, and the most characters that its aliases and phonemes may
/// bring it to.
constexpr double longestSpeechSeconds = 3600.0;
constexpr std::size_t mostSpokenCharacters = 100'000;

/// Speaks a job's line, at the engine's own rate. Once in a process's life: only a fresh process speaks the same line
/// the same way each time. A line with nothing to say gives a moment of silence.
[[nodiscard]] base::Result<Sound, JobFailure> spokenLine(const SpeechJob &job);

} // namespace orlenta::localvoices
