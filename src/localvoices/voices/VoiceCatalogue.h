#pragma once

#include <optional>
#include <vector>

#include "localvoices/voices/VoiceProfile.h"

namespace orlenta::localvoices {

/// All voices, in the order in which they are offered: the most natural first. Any thread.
[[nodiscard]] const std::vector<VoiceProfile> &voiceCatalogue();

/// The voice with this id, if there is one.
[[nodiscard]] std::optional<VoiceProfile> findVoice(const QString &id);

/// The sentence by which a voice introduces itself.
[[nodiscard]] QString introductionOf(const VoiceProfile &voice);

} // namespace orlenta::localvoices
