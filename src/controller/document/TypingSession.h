#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>

#include "controller/document/Document.h"

namespace orlenta::controller {

class UndoManager;

/// Turns typing into undo steps: the text goes to the line with each key, and one step is made of all that was typed
/// since the baseline when something commits it. Main thread.
class TypingSession final : public QObject {
    Q_OBJECT
public:
    enum class Flush { No, Yes };

    TypingSession(Document &document, UndoManager &undoManager, QObject *parent = nullptr);

    /// A text field begins to edit the line: its present text becomes the baseline.
    void beginEditing(const model::LineId &id);
    /// Writes what was typed to the line.
    void type(const model::LineId &id, const QString &text);
    /// Makes a "Typing" step of each line whose text has left its baseline. Does nothing while undoing or redoing.
    void commit();
    /// Sets every baseline to its line's present text. `flush` makes the text views drop what they hold back.
    void refreshBaselines(Flush flush);

private:
    void registerTextStep(const model::LineId &id, const QString &text, const QString &opposite);
    void applyText(const model::LineId &id, const QString &text, const QString &opposite);

    Document &m_document;
    UndoManager &m_undoManager;
    QHash<model::LineId, QString> m_typingBaselines;
};

} // namespace orlenta::controller
