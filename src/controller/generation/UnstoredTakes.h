#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "controller/generation/GenerationRequestContext.h"
#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Generated audio that couldn't be stored in the project. Each file is kept under its clip's name in the user's data
/// folder, with a record of its line beside it, so that the list is there again when the project is opened again. A
/// notice says how many there are, and where. Main thread.
class UnstoredTakes final : public QObject {
    Q_OBJECT
public:
    struct Entry {
        model::LineId lineId;
        std::optional<GenerationRequestContext> context;
        QString path;
        /// Why it couldn't be stored, as a message for the user. Empty after a restart.
        QString reason = {};
    };

    explicit UnstoredTakes(ProjectController &controller, QObject *parent = nullptr);

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }
    /// The folder of the files.
    [[nodiscard]] static QString folder();

    /// Moves the entry's file to the folder and adds the entry. A file that can't be moved stays where it is, and isn't
    /// listed after a restart.
    QCoro::Task<void> keep(Entry entry);
    /// Tries to store each take. Those that fail, and those whose line is deleted, stay in the list.
    QCoro::Task<void> storeAgain();

Q_SIGNALS:
    void changed();

private:
    void restore();
    void tell();

    ProjectController &m_controller;
    QList<Entry> m_entries;
};

} // namespace orlenta::controller
