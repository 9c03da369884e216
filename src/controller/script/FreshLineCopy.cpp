#include "controller/script/FreshLineCopy.h"

namespace orlenta::controller {
namespace {

/// Gives each record a new id. Returns the new id of the `active` record.
template <typename Record, typename Id>
std::optional<Id> renewIds(QList<Record> &records, const std::optional<Id> &active) {
    std::optional<Id> renewedActive;
    for (Record &record : records) {
        const bool isActive = active == record.id;
        record.id = Id::create();
        if (isActive)
            renewedActive = record.id;
    }
    return renewedActive;
}

} // namespace

model::ProjectLine freshLineCopy(const model::ProjectLine &line) {
    model::ProjectLine copy = line;
    copy.lineId = model::LineId::create();
    copy.activeTakeId = renewIds(copy.takes, line.activeTakeId);
    copy.activeSourceId = renewIds(copy.sourceRecordings, line.activeSourceId);
    return copy;
}

} // namespace orlenta::controller
