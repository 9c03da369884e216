#include "tags/TagInstance.h"

#include <QtCore/QHashFunctions>

namespace orlenta::tags {

QString TagInstance::identity() const {
    return lineId.text() + u':' + normalizedKey;
}

size_t qHash(const TagInstance &instance, size_t seed) {
    return qHashMulti(seed, instance.lineId, instance.tagText, instance.normalizedKey,
                      static_cast<int>(instance.category));
}

} // namespace orlenta::tags
