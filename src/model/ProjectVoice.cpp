#include "model/ProjectVoice.h"

namespace orlenta::model {

QString defaultStripeColor() {
    return QStringLiteral("#7F78DE");
}

} // namespace orlenta::model
