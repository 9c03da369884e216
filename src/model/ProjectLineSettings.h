#pragma once

#include <QtCore/QString>

#include "model/DirectionMode.h"

namespace orlenta::model {

/// The generation settings of a line, or of a take when it was made.
struct ProjectLineSettings {
    /// 0 to 1.
    double stability = 0.5;
    /// 0 to 1.
    double similarityBoost = 0.75;
    /// 0 to 1.
    double style = 0.0;
    /// 0.7 to 1.2; 1 is the voice's normal speed.
    double speed = 1.0;
    /// The short model key: "v3", "v2" or "Flash".
    QString model;
    /// The delivery word: "Creative", "Natural" or "Robust".
    QString mode;
    DirectionMode directionMode = DirectionMode::Text;

    /// The settings of a new line: model "v3", mode "Natural".
    [[nodiscard]] static ProjectLineSettings newLineDefaults();
    /// The settings of a line without settings and without a preset: like newLineDefaults(), but model "v2".
    [[nodiscard]] static ProjectLineSettings fallback();

    friend bool operator==(const ProjectLineSettings &, const ProjectLineSettings &) = default;
};

} // namespace orlenta::model
