#include "model/IdRepair.h"

#include <QtCore/QSet>

namespace orlenta::model {
namespace {

template <typename Record>
void repairRecords(QList<Record> &records) {
    // Most lines have one take or none.
    if (records.size() < 2)
        return;
    using Id = decltype(Record::id);
    QSet<Id> seen;
    seen.reserve(records.size());
    for (Record &record : records) {
        while (seen.contains(record.id))
            record.id = Id::create();
        seen.insert(record.id);
    }
}

} // namespace

void repairIds(QList<CustomTag> &tags) {
    repairRecords(tags);
}

void repairIds(ProjectLine &line) {
    repairRecords(line.takes);
    repairRecords(line.sourceRecordings);
}

void repairIds(Project &project) {
    repairRecords(project.voices);
    repairRecords(project.presets);
    repairRecords(project.pronunciations);
    repairRecords(project.tabs);
}

} // namespace orlenta::model
