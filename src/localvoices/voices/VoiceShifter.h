#pragma once

#include "localvoices/engines/Sound.h"
#include "localvoices/voices/VoiceProfile.h"

namespace orlenta::localvoices {

/// The sound with pitch and formants moved, at exactly its own length. Any thread.
[[nodiscard]] Sound shifted(const Sound &sound, VoiceShift shift);

/// The sound at another pace, with its pitch kept: `speed` 2 halves the length. Any thread.
[[nodiscard]] Sound paced(const Sound &sound, double speed);

/// Speech as another voice would say it, at exactly its own length: pitch and formants are moved from the speaker's to
/// the voice's and the spectrum is tilted to the voice's colour. Any thread.
[[nodiscard]] Sound spokenAs(const VoiceProfile &voice, const Sound &speech);

/// The middle of the speaker's pitch in hertz, 60 to 400; 0 for sound without voiced speech. Autocorrelation over
/// windows of 40 ms, after Rabiner, "On the use of autocorrelation analysis for pitch detection" (1977).
[[nodiscard]] double middlePitch(const Sound &speech);

} // namespace orlenta::localvoices
