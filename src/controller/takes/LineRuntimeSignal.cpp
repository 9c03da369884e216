#include "controller/takes/LineRuntimeSignal.h"

namespace orlenta::controller {

void LineRuntimeSignal::bump() {
    ++m_version;
    Q_EMIT versionChanged();
}

} // namespace orlenta::controller
