#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// Turns typing into undo steps: the text goes to the line with each key, and one step is made of all that was typed
/// since the baseline when something commits it. Main thread.
class TypingSession final {
public:
    explicit TypingSession(ProjectController &controller) : m_controller(controller) {}

    /// A text field begins to edit the line: its present text becomes the baseline.
    void beginEditing(const model::LineId &id);
    /// Writes what was typed to the line.
    void type(const model::LineId &id, const QString &text);
    /// Makes a "Typing" step of each line whose text has left its baseline. Does nothing while undoing or redoing.
    void commit();
    /// Sets every baseline to its line's present text.
    void refreshBaselines();

private:
    void registerTextStep(const model::LineId &id, const QString &text, const QString &opposite);
    void applyText(const model::LineId &id, const QString &text, const QString &opposite);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
