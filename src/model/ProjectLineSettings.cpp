#include "model/ProjectLineSettings.h"

namespace orlenta::model {

ProjectLineSettings ProjectLineSettings::newLineDefaults() {
    ProjectLineSettings settings = fallback();
    settings.model = QStringLiteral("v3");
    return settings;
}

ProjectLineSettings ProjectLineSettings::fallback() {
    return {0.5, 0.75, 0.0, 1.0, QStringLiteral("v2"), QStringLiteral("Natural"), DirectionMode::Text};
}

} // namespace orlenta::model
