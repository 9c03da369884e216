#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"
#include "model/ProjectLineSettings.h"

namespace orlenta::model {

/// A generated audio file of a line.
struct Take {
    TakeId id;
    /// A bare file name in "Audio Files/Generated"; empty if the stored name was refused.
    QString filename;
    base::Timestamp generatedAt{};
    VoiceId voiceId;
    std::optional<PresetId> presetId;
    /// The line's effective settings when the take was generated.
    ProjectLineSettings settingsSnapshot;
    /// User-perceived characters of the line's text when the take was generated.
    std::int64_t characterCount = 0;

    friend bool operator==(const Take &, const Take &) = default;
};

} // namespace orlenta::model

Q_DECLARE_TYPEINFO(orlenta::model::Take, Q_RELOCATABLE_TYPE);
