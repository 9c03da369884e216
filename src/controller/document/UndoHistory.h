#pragma once

#include <QtCore/QString>

#include "controller/document/EditKey.h"
#include "controller/document/StoreUndoSnapshot.h"

namespace orlenta::controller {

class Document;
class LineRuntime;
class MediaFiles;
class ScriptStructure;
class Selection;
class TypingSession;
class UndoManager;

/// Undo by snapshots: an operation takes one before it changes anything and registers it when it is done. Undo and redo
/// swap the stored snapshot with the live state through the same code. The notes of lines stay as they are.
class UndoHistory final {
public:
    struct Parts {
        Document &document;
        UndoManager &undoManager;
        TypingSession &typing;
        Selection &selection;
        ScriptStructure &structure;
        LineRuntime &runtime;
        MediaFiles &media;
    };

    explicit UndoHistory(const Parts &parts) : m_parts(parts) {}

    /// Commits typing, then copies the live state.
    [[nodiscard]] StoreUndoSnapshot takeSnapshot();
    void registerUndo(const StoreUndoSnapshot &before, const QString &actionName);

private:
    void apply(const StoreUndoSnapshot &snapshot, const QString &actionName);
    void restore(const StoreUndoSnapshot &snapshot);
    void restoreProject(const model::Project &stored);
    void restoreRuntime(const StoreUndoSnapshot &snapshot);

    Parts m_parts;
};

} // namespace orlenta::controller
