#pragma once

#include <vector>

#include "controller/document/EditKey.h"
#include "model/ProjectLine.h"
#include "model/ProjectTab.h"

namespace orlenta::controller {

class Document;
class LineRuntime;
class Selection;
class TypingSession;

/// Changes of tabs and of the list of lines, with the effects that each always has on order and selection.
class ScriptStructure final {
public:
    ScriptStructure(Document &document, TypingSession &typing, Selection &selection, LineRuntime &runtime);

    /// Stores the tabs; an active tab that is no longer among them gives way to the first.
    void setTabs(const QList<model::ProjectTab> &tabs, EditKey);
    /// Shows another tab: ends the editing of a line and marks the project dirty, without an undo step.
    void setActiveTab(const model::TabId &id, EditKey);
    /// Gives a tab these lines in this order. Lines that aren't in the project yet come from `newLines`.
    void setLineIds(const model::TabId &id, const QList<model::LineId> &lineIds, EditKey);
    /// Makes these the active tab's lines. `newLines` are added or replace those of their ids; lines of the tab that
    /// aren't named go, with their runtime states.
    void replaceActiveTabLines(const QList<model::LineId> &lineIds, const std::vector<model::ProjectLine> &newLines,
                               EditKey);
    void addLines(const std::vector<model::ProjectLine> &lines, EditKey);
    /// Puts the lines in the order of the tabs; a line that no tab names is dropped.
    void renumberFromTabs(EditKey);

private:
    Document &m_document;
    TypingSession &m_typing;
    Selection &m_selection;
    LineRuntime &m_runtime;
};

} // namespace orlenta::controller
