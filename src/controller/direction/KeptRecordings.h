#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Recordings that a full or missing disk kept off their lines. Their files stay where they are. A notice says where,
/// until the user dismisses it or every recording is on its line. Main thread.
class KeptRecordings final : public QObject {
    Q_OBJECT
public:
    struct Entry {
        model::LineId lineId;
        QUrl file;
        double durationSeconds = 0.0;
        /// What went wrong, as a sentence for the user.
        QString reason;
    };

    explicit KeptRecordings(ProjectController &controller) : m_controller(controller) {}

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }
    void keep(const Entry &entry);
    /// Tries to store each recording as its line's direction. Those that fail, and those whose line is deleted, stay in
    /// the list.
    QCoro::Task<void> putOnLines();

private:
    void tell();

    ProjectController &m_controller;
    QList<Entry> m_entries;
};

} // namespace orlenta::controller
