#include "model/ProjectLine.h"

#include "model/RecordSearch.h"

namespace orlenta::model {

ProjectLine ProjectLine::makeNew() {
    ProjectLine line;
    line.lineId = LineId::create();
    line.settings = ProjectLineSettings::newLineDefaults();
    return line;
}

const Take *ProjectLine::activeTake() const {
    const Take *named = activeTakeId ? findRecord(takes, *activeTakeId) : nullptr;
    return named != nullptr || takes.isEmpty() ? named : &takes.last();
}

const SourceRecording *ProjectLine::activeRecording() const {
    const SourceRecording *named = activeSourceId ? findRecord(sourceRecordings, *activeSourceId) : nullptr;
    return named != nullptr || sourceRecordings.isEmpty() ? named : &sourceRecordings.last();
}

} // namespace orlenta::model
