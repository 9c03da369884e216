#pragma once

#include "base/TypedId.h"

/// One id type per kind of record, so that a line's id can't be passed as a take's.
namespace orlenta::model {

using ProjectId = base::TypedId<struct ProjectIdTag>;
using LineId = base::TypedId<struct LineIdTag>;
using TabId = base::TypedId<struct TabIdTag>;
using VoiceId = base::TypedId<struct VoiceIdTag>;
using PresetId = base::TypedId<struct PresetIdTag>;
using TakeId = base::TypedId<struct TakeIdTag>;
using RecordingId = base::TypedId<struct RecordingIdTag>;
using PronunciationId = base::TypedId<struct PronunciationIdTag>;
using CustomTagId = base::TypedId<struct CustomTagIdTag>;

} // namespace orlenta::model
