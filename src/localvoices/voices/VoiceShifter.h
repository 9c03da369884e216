#pragma once

#include "localvoices/engines/Sound.h"
#include "localvoices/voices/VoiceProfile.h"

namespace orlenta::localvoices {

/// Shifts pitch and formants; keeps the exact length. Any thread.
[[nodiscard]] Sound shifted(const Sound &sound, VoiceShift shift);

/// Changes the pace and keeps the pitch; `speed` 2 halves the length. Any thread.
[[nodiscard]] Sound paced(const Sound &sound, double speed);

/// Converts speech to another voice and keeps the exact length: shifts pitch and formants from the speaker's to the
/// voice's, and applies the voice's brightness. Any thread.
[[nodiscard]] Sound spokenAs(const VoiceProfile &voice, const Sound &speech);

/// The speaker's median pitch, 60 to 400 Hz; 0 if there is no voiced speech. Autocorrelation over windows of 40 ms,
/// after Rabiner, "On the use of autocorrelation analysis for pitch detection" (1977).
[[nodiscard]] double middlePitch(const Sound &speech);

} // namespace orlenta::localvoices
