#include "shell/theme/FontChanges.h"

namespace orlenta::shell {

FontChanges &FontChanges::notifier() {
    static FontChanges notifier;
    return notifier;
}

} // namespace orlenta::shell
