#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// Turns typing into undo steps. Each keystroke changes the line at once; commit() makes one step of everything typed
/// since the line's baseline. Main thread.
class TypingSession final {
public:
    explicit TypingSession(ProjectController &controller) : m_controller(controller) {}

    /// Call when a text field starts editing the line. The current text becomes the baseline.
    void beginEditing(const model::LineId &id);
    /// Sets the line's text.
    void type(const model::LineId &id, const QString &text);
    /// Makes a "Typing" step for each line whose text differs from its baseline. Does nothing during undo and redo.
    void commit();
    /// Sets every baseline to its line's current text.
    void refreshBaselines();

private:
    void registerTextStep(const model::LineId &id, const QString &text, const QString &opposite);
    void applyText(const model::LineId &id, const QString &text, const QString &opposite);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
