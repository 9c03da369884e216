#pragma once

#include <variant>

#include <QtCore/QFlags>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>

#include "model/Project.h"

namespace orlenta::controller {

struct ProjectState;

/// The separately tracked parts of a line.
enum class LineField : unsigned {
    Text = 1U << 0U,
    Notes = 1U << 1U,
    Voice = 1U << 2U,
    /// The line's own settings or its preset.
    Settings = 1U << 3U,
    /// The list of takes, or the active one.
    Takes = 1U << 4U,
    /// The list of direction recordings, or the active one.
    Recordings = 1U << 5U,
};
Q_DECLARE_FLAGS(LineFields, LineField)
Q_DECLARE_OPERATORS_FOR_FLAGS(LineFields)

/// Existing lines changed in these fields. Added and removed lines aren't listed.
struct LinesChanged {
    QHash<model::LineId, LineFields> lines;

    /// All fields that changed in at least one line.
    [[nodiscard]] LineFields fields() const;
};
/// Lines of the active tab were added, removed or moved, or another tab became active.
struct ScriptLinesChanged {};
/// Tabs were added, removed, moved or renamed.
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
/// Text views must drop their pending text and read their lines again.
struct TypingFlushed {};
/// The runtime state of these lines changed: audio in use, waveforms, generating.
struct RuntimeChanged {
    QSet<model::LineId> lines;
};

/// One kind of change made by an edit. Observers handle the kinds they need and ignore the rest.
using ProjectChange = std::variant<TabsChanged, ActiveTabChanged, ScriptLinesChanged, RuntimeChanged, TypingFlushed,
                                   VoicesChanged, PresetsChanged, PronunciationsChanged, LinesChanged, TitleChanged,
                                   SelectionChanged, TextSelectionChanged, EditingLineChanged, UnsavedChangesChanged>;

/// The differences between two states in the order of announcement: structure first, the dirty mark last. The cost
/// depends on the size of the change, not of the project.
[[nodiscard]] QList<ProjectChange> changesBetween(const ProjectState &before, const ProjectState &after);
/// Whether the projects differ in anything but date and selection.
[[nodiscard]] bool recordsDiffer(const model::Project &a, const model::Project &b);

} // namespace orlenta::controller
