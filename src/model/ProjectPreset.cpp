#include "model/ProjectPreset.h"

namespace orlenta::model {

const ProjectPreset &ProjectPreset::processDefault() {
    static const ProjectPreset preset{PresetId::create(), QStringLiteral("Default"), ProjectLineSettings::fallback(),
                                      std::nullopt};
    return preset;
}

} // namespace orlenta::model
