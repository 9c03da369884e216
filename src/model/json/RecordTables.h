#pragma once

#include <memory>
#include <vector>

#include "model/CustomTag.h"
#include "model/json/RecordSchema.h"
#include "model/Project.h"
#include "model/ScriptTab.h"

namespace orlenta::model::json {

/// A line with its place in the sequence across all tabs, which the file keeps in the line itself.
struct LineDraft : ProjectLine {
    std::int64_t order = 0;
};

/// A project on its way in; its lines go into its table only when they have been repaired.
struct ProjectDraft {
    Project project;
    std::vector<std::shared_ptr<LineDraft>> lines;
};

/// Lines on their way through the clipboard.
struct LinePayloadDraft {
    std::int64_t version = 0;
    ProjectId projectId;
    QList<LineDraft> lines;
};

/// The documents: each is read into the type that it is named after.
[[nodiscard]] const Field &projectDocument();
[[nodiscard]] const Field &linePayloadDocument();
/// Into a QList<CustomTag>.
[[nodiscard]] const Field &customTagsDocument();
/// Into a QList<ScriptTab> and a QList<ScriptLine>.
[[nodiscard]] const Field &scriptTabsDocument();
[[nodiscard]] const Field &scriptLinesDocument();

} // namespace orlenta::model::json
