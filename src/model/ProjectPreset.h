#pragma once

#include <optional>

#include <QtCore/QString>

#include "model/Ids.h"
#include "model/ProjectLineSettings.h"
#include "model/ProjectPresetVoice.h"

namespace orlenta::model {

/// A named set of generation settings, with an optional voice.
struct ProjectPreset {
    PresetId id;
    QString name;
    /// The preset's seven setting fields.
    ProjectLineSettings settings;
    std::optional<ProjectPresetVoice> voice;

    /// "Default": model "v2", mode "Natural". Created once per process, so all projects open in it share the id.
    [[nodiscard]] static const ProjectPreset &processDefault();

    friend bool operator==(const ProjectPreset &, const ProjectPreset &) = default;
};

} // namespace orlenta::model
