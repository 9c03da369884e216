#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"
#include "model/ProjectLineSettings.h"

namespace orlenta::model {

/// One generated audio file of a line.
struct Take {
    TakeId id;
    /// A bare file name inside "Audio Files/Generated"; empty where the stored name was refused.
    QString filename;
    base::Timestamp generatedAt{};
    VoiceId voiceId;
    std::optional<PresetId> presetId;
    /// The line's effective settings when the take was made.
    ProjectLineSettings settingsSnapshot;
    /// User-perceived characters of the line's text at generation.
    std::int64_t characterCount = 0;

    friend bool operator==(const Take &, const Take &) = default;
};

} // namespace orlenta::model

Q_DECLARE_TYPEINFO(orlenta::model::Take, Q_RELOCATABLE_TYPE);
