#pragma once

#include <optional>
#include <vector>

#include "localvoices/voices/VoiceProfile.h"

namespace orlenta::localvoices {

/// All voices, the most natural ones first. Any thread.
[[nodiscard]] const std::vector<VoiceProfile> &voiceCatalogue();

/// Looks up a voice by id.
[[nodiscard]] std::optional<VoiceProfile> findVoice(const QString &id);

/// The sentence with which a voice introduces itself, in its own language.
[[nodiscard]] QString introductionOf(const VoiceProfile &voice);

} // namespace orlenta::localvoices
