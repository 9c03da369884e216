#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace orlenta::controller {

/// The undo and redo stacks of one project, as named groups of handlers. Undoing runs a group's handlers in reverse;
/// what they register meanwhile becomes the matching redo. Main thread.
class UndoManager final : public QObject {
    Q_OBJECT
public:
    using Handler = std::function<void()>;

    using QObject::QObject;

    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    [[nodiscard]] bool isUndoing() const;
    [[nodiscard]] bool isRedoing() const;
    /// The action names for the menu; empty if there is nothing to undo or redo.
    [[nodiscard]] QString undoActionName() const;
    [[nodiscard]] QString redoActionName() const;
    [[nodiscard]] int groupingLevel() const;
    /// Differs after each step that was made, undone or redone.
    [[nodiscard]] std::uint64_t revision() const { return m_revision; }

    void beginUndoGrouping();
    void endUndoGrouping();
    /// Adds a handler to the open group, or as its own group if none is open.
    void registerUndo(Handler handler);
    /// Names the open group, or the last closed one.
    void setActionName(const QString &name);
    void undo();
    void redo();

Q_SIGNALS:
    /// The available steps or their names have changed.
    void stateChanged();

private:
    enum class Phase { Idle, Undoing, Redoing };
    struct Group {
        QString name;
        std::vector<Handler> handlers;
    };

    std::vector<Group> &target();
    void run(std::vector<Group> &from, Phase phase);

    std::vector<Group> m_undo;
    std::vector<Group> m_redo;
    int m_level = 0;
    std::uint64_t m_revision = 0;
    Phase m_phase = Phase::Idle;
};

} // namespace orlenta::controller
