#pragma once

#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"

namespace orlenta::model {

/// A direction recording, or an imported direction file, of a line.
struct SourceRecording {
    RecordingId id;
    /// A bare file name in "Audio Files/Recordings"; empty if the stored name was refused.
    QString filename;
    base::Timestamp recordedAt{};
    double durationSeconds = 0.0;

    friend bool operator==(const SourceRecording &, const SourceRecording &) = default;
};

} // namespace orlenta::model

Q_DECLARE_TYPEINFO(orlenta::model::SourceRecording, Q_RELOCATABLE_TYPE);
