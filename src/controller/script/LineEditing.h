#pragma once

#include <functional>
#include <optional>

#include <QtCore/QSet>
#include <QtCore/QStringList>

#include "controller/casting/ServiceVoice.h"
#include "model/ProjectLine.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// Operations on the active tab's lines. Unless noted, each is one undo step, and does nothing if its precondition
/// fails. Main thread.
class LineEditing final {
public:
    using NewLineVoiceProvider = std::function<std::optional<ServiceVoice>()>;

    explicit LineEditing(ProjectController &controller) : m_controller(controller) {}

    /// The line with that id in any tab, or null. Valid until the project's next change.
    [[nodiscard]] const model::ProjectLine *find(const model::LineId &id) const;
    /// Position in the active tab, or -1.
    [[nodiscard]] qsizetype indexInScript(const model::LineId &id) const;
    [[nodiscard]] bool canSplitLine() const;
    [[nodiscard]] bool canMoveUp() const;
    [[nodiscard]] bool canMoveDown() const;

    /// Supplies the voice for addLine() when there is no line to take it from.
    void setNewLineVoiceProvider(NewLineVoiceProvider provider);
    /// Adds a line at the end of the active tab, with voice and settings of the selected line, or otherwise the last
    /// one.
    void addLine();
    /// Inserts such a line below the last selected one.
    void insertLineBelow();
    void duplicateLine(const model::LineId &id);
    /// Deletes the line. If it is the tab's only line, a new, empty one takes its place.
    void deleteLine(const model::LineId &id);
    /// Why several lines are removed; determines the name of the undo step.
    enum class Removal { Delete, Cut };
    /// Removes the lines that are in the active tab as one step, "Delete Lines" or "Cut Lines".
    void deleteLines(const QList<model::LineId> &ids, Removal removal);
    /// Replaces the selected line with one line per sentence. The new lines have no takes.
    void splitLine();
    /// Moves the selected lines one place. Those that stand together stay together; those at the edge stay there.
    void moveLineUp();
    void moveLineDown();
    /// Moves the line within its tab to before the line currently at `insertionIndex`.
    void moveLine(const model::LineId &id, qsizetype insertionIndex);
    /// Copies the line to another tab, before the line at `insertionIndex` or at the end.
    void copyLineToTab(const model::LineId &id, const model::TabId &target,
                       std::optional<qsizetype> insertionIndex = std::nullopt);
    /// Sets the notes. Not undoable, and undoing other steps keeps them.
    void setNotes(const model::LineId &id, const QString &notes);

private:
    enum class Direction { Up, Down };

    [[nodiscard]] std::optional<model::LineId> referenceLine() const;
    [[nodiscard]] model::ProjectLine newLine() const;
    void addLineAt(qsizetype index, const std::optional<model::LineId> &reference, const QString &undoName);
    [[nodiscard]] QStringList sentencesOfSelectedLine() const;
    [[nodiscard]] bool canMove(Direction direction) const;
    void removeFromScript(const Edit &edit, const QSet<model::LineId> &ids);
    void move(Direction direction);

    ProjectController &m_controller;
    NewLineVoiceProvider m_newLineVoice;
};

} // namespace orlenta::controller
