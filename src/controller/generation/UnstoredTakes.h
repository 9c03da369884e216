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

/// Generated audio that was paid for and couldn't be stored in the project. Each file lies under its clip's name in a
/// folder of the user's data, where it outlives the program, until it is stored after all. Main thread.
class UnstoredTakes final : public QObject {
    Q_OBJECT
public:
    struct Entry {
        model::LineId lineId;
        std::optional<GenerationRequestContext> context;
        QString path;
        /// Why it couldn't be stored: a sentence for the user.
        QString reason;
    };

    explicit UnstoredTakes(ProjectController &controller, QObject *parent = nullptr);

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }
    /// Where the files lie.
    [[nodiscard]] static QString folder();

    /// Moves the entry's file to the folder and lists it. A file that can't be moved is listed where it is.
    QCoro::Task<void> keep(Entry entry);
    /// Tries to store each of them again. Those that fail, and those whose line is deleted, stay.
    QCoro::Task<void> storeAgain();

Q_SIGNALS:
    void changed();

private:
    ProjectController &m_controller;
    QList<Entry> m_entries;
};

} // namespace orlenta::controller
