#pragma once

#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"

namespace orlenta::model {

/// One direction recording, or imported direction file, of a line.
struct SourceRecording {
    RecordingId id;
    /// A bare file name inside "Audio Files/Recordings"; empty where the stored name was refused.
    QString filename;
    base::Timestamp recordedAt{};
    double durationSeconds = 0.0;

    friend bool operator==(const SourceRecording &, const SourceRecording &) = default;
};

} // namespace orlenta::model

Q_DECLARE_TYPEINFO(orlenta::model::SourceRecording, Q_RELOCATABLE_TYPE);
