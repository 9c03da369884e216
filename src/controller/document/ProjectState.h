#pragma once

#include <QtCore/QHash>
#include <QtCore/QUrl>

#include "controller/script/SelectionValues.h"
#include "controller/takes/LineRuntimeMap.h"
#include "model/Project.h"

namespace orlenta::controller {

/// All that is live of an open project. ProjectController holds it, an Edit changes it, everybody else reads it. Copies
/// share everything until one of them changes.
struct ProjectState {
    model::Project project;
    /// The project folder; empty until the project has one.
    QUrl projectURL;
    SelectionValues selection;
    LineRuntimeMap lineRuntime;
    /// The next cast colour's index into the palette.
    int nextColorIndex = 1;
    bool hasUnsavedChanges = false;
    /// Raised to make text views drop their pending text and read the line again.
    int typingFlushVersion = 0;
    /// For each line that has been edited, the text that the next "Typing" step goes back to.
    QHash<model::LineId, QString> typingBaselines;
    /// The pronunciation entries may differ from what the speech service holds; every change of them raises the
    /// revision.
    bool pronunciationDirty = true;
    int pronunciationRevision = 0;

    /// The project folder as a local path, or the empty text while there is none.
    [[nodiscard]] QString folder() const { return projectURL.toLocalFile(); }
    [[nodiscard]] const model::ProjectLine *findLine(const model::LineId &id) const { return project.lines.find(id); }
    [[nodiscard]] const model::ProjectTab *activeTab() const;
    /// The active tab's lines in display order.
    [[nodiscard]] const model::LineIdList &scriptLineIds() const;
    [[nodiscard]] qsizetype tabIndex(const model::TabId &id) const;
    /// The selected line, if exactly one is selected.
    [[nodiscard]] std::optional<model::LineId> singleSelectedLineId() const;
    /// The selected lines of the active tab in display order.
    [[nodiscard]] QList<model::LineId> selectedLinesInScript() const;
};

} // namespace orlenta::controller
