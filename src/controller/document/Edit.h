#pragma once

#include <QtCore/QString>

#include "controller/document/ProjectState.h"

namespace orlenta::controller {

class ProjectController;

/// The scope of one change to an open project, and the only way to make one. At its end, an edit dates the project and
/// marks it dirty if records changed, registers its undo step, and announces the changes. Edits nest: only the
/// outermost announces, so observers never see a half-made state. Only the controller's subjects may create one. Don't
/// hold one across a co_await. Main thread.
class Edit final {
public:
    /// A change without an undo step: typing, notes, selection, runtime state.
    explicit Edit(ProjectController &controller);
    /// A change that is one undo step of that name, or none if nothing changes. Commits pending typing first. No other
    /// named edit may be open.
    Edit(ProjectController &controller, const QString &actionName);
    ~Edit();
    Edit(const Edit &) = delete;
    Edit &operator=(const Edit &) = delete;

    [[nodiscard]] ProjectController &controller() const { return m_controller; }
    [[nodiscard]] ProjectState *operator->() const { return &m_state; }
    [[nodiscard]] ProjectState &state() const { return m_state; }

    /// Changes a line. Does nothing if the line is gone.
    template <typename Mutate>
    void updateLine(const model::LineId &id, Mutate mutate) const {
        m_state.project.lines.update(id, mutate);
    }
    /// Changes a line's runtime state, starting from an empty one if the line has none yet.
    template <typename Mutate>
    void updateRuntime(const model::LineId &id, Mutate mutate) const {
        LineRuntimeState runtime = m_state.lineRuntime.value(id);
        mutate(runtime);
        m_state.lineRuntime.insert(id, runtime);
    }
    /// Copies a line's runtime state to its duplicate, which isn't generating.
    void copyRuntime(const model::LineId &from, const model::LineId &to) const;

private:
    void settleState() const;
    [[nodiscard]] bool hasUndoableChange() const;
    void registerUndo() const;

    ProjectController &m_controller;
    ProjectState &m_state;
    /// The state when the outermost edit began.
    ProjectState m_before;
    QString m_actionName;
    bool m_isOutermost = false;
};

} // namespace orlenta::controller
