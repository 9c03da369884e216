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

/// Operations on the active tab's lines. Each is one undo step, unless it says otherwise, and does nothing where its
/// precondition fails. Main thread.
class LineEditing final {
public:
    using NewLineVoiceProvider = std::function<std::optional<ServiceVoice>()>;

    explicit LineEditing(ProjectController &controller) : m_controller(controller) {}

    /// The line of that id in any tab, or null. The pointer holds until the next change of the project.
    [[nodiscard]] const model::ProjectLine *find(const model::LineId &id) const;
    /// Position in the active tab, or -1.
    [[nodiscard]] qsizetype indexInScript(const model::LineId &id) const;
    [[nodiscard]] bool canSplitLine() const;
    [[nodiscard]] bool canMoveUp() const;
    [[nodiscard]] bool canMoveDown() const;

    /// Where addLine() gets a voice from when no line can lend it one.
    void setNewLineVoiceProvider(NewLineVoiceProvider provider);
    /// Adds a line at the end of the active tab, with the voice and settings of the selected or else the last line.
    void addLine();
    void duplicateLine(const model::LineId &id);
    /// Removes the line. The only line of a tab gives way to a new, empty one.
    void deleteLine(const model::LineId &id);
    /// Why several lines go at once.
    enum class Removal { Delete, Cut };
    /// Removes those of the lines that are in the active tab in one step, "Delete Lines" or "Cut Lines".
    void deleteLines(const QList<model::LineId> &ids, Removal removal);
    /// Puts one line per sentence in place of the selected one. The new lines have no takes.
    void splitLine();
    void moveLineUp();
    void moveLineDown();
    /// Moves the line within its tab so that it stands before the line that is at `insertionIndex` now.
    void moveLine(const model::LineId &id, qsizetype insertionIndex);
    /// Puts a copy of the line at the end of a tab, or before the line at `insertionIndex` there.
    void copyLineToTab(const model::LineId &id, const model::TabId &target,
                       std::optional<qsizetype> insertionIndex = std::nullopt);
    /// Writes the notes: no undo step, nor does undoing another one take them back.
    void setNotes(const model::LineId &id, const QString &notes);

private:
    enum class Direction { Up, Down };

    [[nodiscard]] const model::ProjectLine *referenceLine() const;
    [[nodiscard]] model::ProjectLine newLine() const;
    [[nodiscard]] QStringList sentencesOfSelectedLine() const;
    [[nodiscard]] qsizetype movableIndex(Direction direction) const;
    void removeFromScript(const Edit &edit, const QSet<model::LineId> &ids);
    void move(Direction direction);

    ProjectController &m_controller;
    NewLineVoiceProvider m_newLineVoice;
};

} // namespace orlenta::controller
