#pragma once

#include <memory>
#include <vector>

#include "model/CustomTag.h"
#include "model/json/RecordSchema.h"
#include "model/Project.h"
#include "model/ScriptTab.h"

namespace orlenta::model::json {

/// A line with its position across all tabs, which the file stores in the line.
struct LineDraft : ProjectLine {
    std::int64_t order = 0;
};

/// A project being read. Lines go into its table only after their repair.
struct ProjectDraft {
    Project project;
    std::vector<std::shared_ptr<LineDraft>> lines;
};

/// Lines being read from the clipboard.
struct LinePayloadDraft {
    std::int64_t version = 0;
    ProjectId projectId;
    QList<LineDraft> lines;
};

/// The documents. Each is read into the type it is named after.
[[nodiscard]] const Field &projectDocument();
[[nodiscard]] const Field &linePayloadDocument();
/// Into a QList<CustomTag>.
[[nodiscard]] const Field &customTagsDocument();
/// Into a QList<ScriptTab> and a QList<ScriptLine>.
[[nodiscard]] const Field &scriptTabsDocument();
[[nodiscard]] const Field &scriptLinesDocument();

} // namespace orlenta::model::json
