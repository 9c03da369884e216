#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QString>

#include "model/Ids.h"
#include "model/ProjectLineSettings.h"

namespace orlenta::controller {

/// The data that a take records, captured when its generation starts so that later edits of the line don't affect it.
struct GenerationRequestContext {
    model::VoiceId voiceId;
    std::optional<model::PresetId> presetId;
    /// The line's effective settings.
    model::ProjectLineSettings settings;
    /// User-perceived characters of the line's whole text, tags included.
    std::int64_t characterCount = 0;
    QString clipName;
};

} // namespace orlenta::controller
