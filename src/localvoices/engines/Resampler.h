#pragma once

#include "localvoices/engines/Sound.h"

namespace orlenta::localvoices {

/// The sound at another rate, of ceil(frames * rate / sound.rate) frames. Any thread.
[[nodiscard]] Sound resampled(const Sound &sound, int rate);

} // namespace orlenta::localvoices
