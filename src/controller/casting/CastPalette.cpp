#include "controller/casting/CastPalette.h"

#include "speech/account/ServiceColor.h"

namespace orlenta::controller {

const QStringList &castPalette() {
    static const QStringList palette = [] {
        QStringList colors;
        for (const speech::ServiceColor &color : speech::servicePalette())
            colors.append(color.hex());
        return colors;
    }();
    return palette;
}

} // namespace orlenta::controller
