#pragma once

#include <array>
#include <functional>
#include <memory>

#include <QtCore/QHash>
#include <QtCore/QSet>

#include "controller/takes/LineRuntimeState.h"
#include "model/Ids.h"

namespace orlenta::controller {

/// The runtime states of a project's lines as a value whose copies share what they have in common: the entries lie in
/// 256 shared buckets, so keeping a copy while one entry changes costs one bucket and not the whole map.
class LineRuntimeMap final {
public:
    using States = QHash<model::LineId, LineRuntimeState>;

    LineRuntimeMap();

    /// The line's state; all empty when there is no entry.
    [[nodiscard]] LineRuntimeState value(const model::LineId &id) const;
    void set(const model::LineId &id, const LineRuntimeState &state);
    void remove(const model::LineId &id);
    void forEach(const std::function<void(const model::LineId &, const LineRuntimeState &)> &visit) const;
    /// The lines whose states differ. Skips what both share.
    [[nodiscard]] QSet<model::LineId> differences(const LineRuntimeMap &other) const;

private:
    static constexpr size_t bucketCount = 256;
    using Bucket = std::shared_ptr<States>;
    using Buckets = std::array<Bucket, bucketCount>;

    static size_t bucketOf(const model::LineId &id);
    States &detached(size_t index);

    std::shared_ptr<Buckets> m_buckets;
};

} // namespace orlenta::controller
