#include "controller/takes/LineRuntimeMap.h"

namespace orlenta::controller {

LineRuntimeMap::LineRuntimeMap() : m_buckets(std::make_shared<Buckets>()) {}

LineRuntimeState LineRuntimeMap::value(const model::LineId &id) const {
    const Bucket &bucket = (*m_buckets)[bucketOf(id)];
    return bucket ? bucket->value(id) : LineRuntimeState();
}

void LineRuntimeMap::set(const model::LineId &id, const LineRuntimeState &state) {
    detached(bucketOf(id)).insert(id, state);
}

void LineRuntimeMap::remove(const model::LineId &id) {
    const Bucket &bucket = (*m_buckets)[bucketOf(id)];
    if (bucket && bucket->contains(id))
        detached(bucketOf(id)).remove(id);
}

void LineRuntimeMap::forEach(const std::function<void(const model::LineId &, const LineRuntimeState &)> &visit) const {
    for (const Bucket &bucket : *m_buckets) {
        if (!bucket)
            continue;
        for (auto entry = bucket->cbegin(); entry != bucket->cend(); ++entry)
            visit(entry.key(), entry.value());
    }
}

QSet<model::LineId> LineRuntimeMap::differences(const LineRuntimeMap &other) const {
    QSet<model::LineId> found;
    if (m_buckets == other.m_buckets)
        return found;
    static const States none;
    for (size_t i = 0; i < bucketCount; ++i) {
        const Bucket &left = (*m_buckets)[i];
        const Bucket &right = (*other.m_buckets)[i];
        if (left == right)
            continue;
        const States &mine = left ? *left : none;
        const States &theirs = right ? *right : none;
        for (auto entry = mine.cbegin(); entry != mine.cend(); ++entry)
            if (entry.value() != theirs.value(entry.key()))
                found.insert(entry.key());
        for (auto entry = theirs.cbegin(); entry != theirs.cend(); ++entry)
            if (!mine.contains(entry.key()) && entry.value() != LineRuntimeState())
                found.insert(entry.key());
    }
    return found;
}

size_t LineRuntimeMap::bucketOf(const model::LineId &id) {
    return id.uuid().data4[7];
}

LineRuntimeMap::States &LineRuntimeMap::detached(size_t index) {
    if (m_buckets.use_count() > 1)
        m_buckets = std::make_shared<Buckets>(*m_buckets);
    Bucket &bucket = (*m_buckets)[index];
    if (!bucket)
        bucket = std::make_shared<States>();
    else if (bucket.use_count() > 1)
        bucket = std::make_shared<States>(*bucket);
    return *bucket;
}

} // namespace orlenta::controller
