#include "model/PronunciationEntry.h"

namespace orlenta::model {

std::optional<QString> PronunciationEntry::alias() const {
    return mode == PronunciationMode::Simple && !phoneticOverride.isEmpty() ? std::optional(phoneticOverride)
                                                                            : std::nullopt;
}

std::optional<QString> PronunciationEntry::phonemes() const {
    return mode == PronunciationMode::Advanced && !phoneticOverride.isEmpty() ? std::optional(phoneticOverride)
                                                                              : std::nullopt;
}

} // namespace orlenta::model
