#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QString>

#include "model/Ids.h"
#include "model/ProjectLineSettings.h"

namespace orlenta::controller {

/// What a take will record, captured when its generation starts so that a later edit of the line can't change it.
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
