#pragma once

#include <QtCore/QString>

#include "controller/document/ProjectState.h"

namespace orlenta::controller {

class ProjectController;

/// The right to change an open project, and the bracket of one change. When it ends it dates the project and marks it
/// dirty if its records have changed, registers the undo step that it was given, and announces what changed. Edits
/// nest: the outermost one announces, so no observer meets a half-made state. Only the controller's own subjects make
/// one. It must not live across a co_await. Main thread.
class Edit final {
public:
    /// A change that is no undo step: typing, notes, selection, what lines have at run time.
    explicit Edit(ProjectController &controller);
    /// A change that is one undo step of that name. Commits typing first. No other named edit may be open.
    Edit(ProjectController &controller, const QString &actionName);
    ~Edit();
    Edit(const Edit &) = delete;
    Edit &operator=(const Edit &) = delete;

    [[nodiscard]] ProjectController &controller() const { return m_controller; }
    [[nodiscard]] ProjectState *operator->() const { return &m_state; }
    [[nodiscard]] ProjectState &state() const { return m_state; }

    /// Changes the line of that id; nothing where it has gone.
    template <typename Mutate>
    void updateLine(const model::LineId &id, Mutate mutate) const {
        m_state.project.lines.update(id, mutate);
    }
    /// Changes what the line has at run time, from all empty where it has nothing yet.
    template <typename Mutate>
    void updateRuntime(const model::LineId &id, Mutate mutate) const {
        LineRuntimeState runtime = m_state.lineRuntime.value(id);
        mutate(runtime);
        m_state.lineRuntime.insert(id, runtime);
    }
    /// Gives a copied line what its source has at run time, except that the copy isn't generating.
    void copyRuntime(const model::LineId &from, const model::LineId &to) const;

private:
    void settleState() const;
    void registerUndo() const;

    ProjectController &m_controller;
    ProjectState &m_state;
    /// The state as it was when the outermost edit began.
    ProjectState m_before;
    QString m_actionName;
    bool m_isOutermost = false;
};

} // namespace orlenta::controller
