#pragma once

#include <QtCore/QHash>
#include <QtCore/QUrl>

#include "controller/script/SelectionValues.h"
#include "controller/takes/LineRuntimeMap.h"
#include "model/Project.h"

namespace orlenta::controller {

/// The complete live state of an open project. ProjectController owns it, an Edit changes it, everyone else only reads
/// it. Copies share their data until one of them changes.
struct ProjectState {
    model::Project project;
    /// The project folder; empty if the project has none yet.
    QUrl projectURL;
    SelectionValues selection;
    LineRuntimeMap lineRuntime;
    /// Palette index of the next cast colour.
    int nextColorIndex = 1;
    bool hasUnsavedChanges = false;
    /// Incremented to make text views drop their pending text and read their line again.
    int typingFlushVersion = 0;
    /// For each line edited so far, the text that undoing the next "Typing" step restores.
    QHash<model::LineId, QString> typingBaselines;
    /// Whether the pronunciation entries may differ from the uploaded dictionary. Each change of the entries increments
    /// the revision.
    bool pronunciationDirty = true;
    int pronunciationRevision = 0;

    /// The project folder as a local path, or empty.
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
