#pragma once

#include <variant>

#include <QtCore/QFlags>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>

#include "model/Project.h"

namespace orlenta::controller {

struct ProjectState;

/// The parts of a line that can change by themselves.
enum class LineField : unsigned {
    Text = 1U << 0U,
    Notes = 1U << 1U,
    Voice = 1U << 2U,
    /// The line's own settings or its preset.
    Settings = 1U << 3U,
    /// The list of takes or which one is in use.
    Takes = 1U << 4U,
    /// The list of direction recordings or which one is in use.
    Recordings = 1U << 5U,
};
Q_DECLARE_FLAGS(LineFields, LineField)
Q_DECLARE_OPERATORS_FOR_FLAGS(LineFields)

/// Lines that were there before and after have changed in these fields.
struct LinesChanged {
    QHash<model::LineId, LineFields> lines;

    /// The fields that changed in any of the lines.
    [[nodiscard]] LineFields fields() const;
};
/// The active tab's list of lines is another: lines came, went or moved, or another tab is active.
struct ScriptLinesChanged {};
/// Tabs came, went, moved or were renamed.
struct TabsChanged {};
struct ActiveTabChanged {};
struct VoicesChanged {};
struct PresetsChanged {};
struct PronunciationsChanged {};
/// The project's name or folder.
struct TitleChanged {};
struct UnsavedChangesChanged {};
/// Which lines are selected.
struct SelectionChanged {};
/// The caret or the text selection in the edited line.
struct TextSelectionChanged {};
struct EditingLineChanged {};
/// Text views drop their pending text and read their lines again.
struct TypingFlushed {};
/// What these lines have at run time: audio in use, waveforms, the generating mark.
struct RuntimeChanged {
    QSet<model::LineId> lines;
};

/// One thing that an edit changed. Observers take the kinds they show and leave the rest.
using ProjectChange = std::variant<TabsChanged, ActiveTabChanged, ScriptLinesChanged, RuntimeChanged, TypingFlushed,
                                   VoicesChanged, PresetsChanged, PronunciationsChanged, LinesChanged, TitleChanged,
                                   SelectionChanged, TextSelectionChanged, EditingLineChanged, UnsavedChangesChanged>;

/// What tells the two states apart, in the order in which it is announced: the structure first, the dirty mark last.
/// Costs what has changed, not what the project holds.
[[nodiscard]] QList<ProjectChange> changesBetween(const ProjectState &before, const ProjectState &after);
/// Whether the projects differ in more than their date and their selection.
[[nodiscard]] bool recordsDiffer(const model::Project &a, const model::Project &b);

} // namespace orlenta::controller
