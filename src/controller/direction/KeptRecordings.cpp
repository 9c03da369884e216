#include "controller/direction/KeptRecordings.h"

#include <utility>

#include <QtCore/QFileInfo>
#include <QtCore/QPointer>

#include "controller/direction/DirectionAudio.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"

namespace orlenta::controller {

void KeptRecordings::keep(const Entry &entry) {
    m_entries.removeIf([&entry](const Entry &other) { return other.file == entry.file; });
    m_entries.append(entry);
    tell();
}

QCoro::Task<void> KeptRecordings::putOnLines() {
    const QPointer<KeptRecordings> self(this);
    const QList<Entry> entries = std::exchange(m_entries, {});
    for (const Entry &entry : entries) {
        // A deleted line may come back by undo.
        if (m_controller.lines().find(entry.lineId) == nullptr) {
            m_entries.append(entry);
            continue;
        }
        // A recording that can't be stored comes back through keep().
        co_await m_controller.directionAudio().installRecording(entry.file, entry.durationSeconds, entry.lineId);
        if (!self)
            co_return;
    }
    tell();
}

void KeptRecordings::tell() {
    if (m_entries.isEmpty()) {
        m_controller.notices().withdraw(Notice::Kind::RecordingKept);
        return;
    }
    const Entry &last = m_entries.constLast();
    const QString path = last.file.toLocalFile();
    const QString folder = QFileInfo(path).absolutePath();
    const QString place = m_entries.size() == 1
                              ? QStringLiteral("The recording is kept in %1").arg(path)
                              : QStringLiteral("%1 recordings are kept in %2").arg(m_entries.size()).arg(folder);
    const QString end = last.reason.endsWith(u'.') ? QString() : QStringLiteral(".");
    m_controller.notices().post(
        {Notice::Kind::RecordingKept, QStringLiteral("%1%2 %3").arg(last.reason, end, place), folder});
}

} // namespace orlenta::controller
