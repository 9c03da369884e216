#include "controller/generation/UnstoredTakes.h"

#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

#include "base/files/AtomicFile.h"
#include "base/files/PrivateFolders.h"
#include "base/LogCategories.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::controller {
namespace {

/// Returns the new path, or the old one if the file couldn't be moved.
QString movedTo(const QString &folder, const QString &name, const QString &path) {
    const QString destination = folder + u'/' + name;
    return QDir().mkpath(folder) && base::moveAtomically(path, destination) ? destination : path;
}

} // namespace

UnstoredTakes::UnstoredTakes(ProjectController &controller, QObject *parent)
    : QObject(parent), m_controller(controller) {}

QString UnstoredTakes::folder() {
    return base::PrivateFolders::applicationSupport() + QStringLiteral("/Unstored Takes");
}

QCoro::Task<void> UnstoredTakes::keep(Entry entry) {
    const QPointer<UnstoredTakes> self(this);
    const QString clip = entry.context ? entry.context->clipName : QStringLiteral("Take");
    const QString name = QStringLiteral("%1 - %2.wav").arg(clip, QUuid::createUuid().toString(QUuid::Id128).left(8));
    QFuture<QString> moving = QtConcurrent::run(movedTo, folder(), name, entry.path);
    entry.path = co_await moving;
    qCWarning(base::log::project, "[Generation] Take not stored, kept as %s", qUtf8Printable(entry.path));
    if (!self)
        co_return;
    m_entries.append(entry);
    Q_EMIT changed();
}

QCoro::Task<void> UnstoredTakes::storeAgain() {
    const QPointer<UnstoredTakes> self(this);
    const QList<Entry> entries = std::exchange(m_entries, {});
    for (Entry entry : entries) {
        const auto problem =
            co_await m_controller.takes().installGeneratedAudio(entry.path, entry.lineId, entry.context);
        if (!self)
            co_return;
        if (problem)
            entry.reason = problem->description();
        if (problem || m_controller.lines().find(entry.lineId) == nullptr)
            m_entries.append(entry);
        else if (!m_controller.projectURL().isEmpty())
            QFile::remove(entry.path);
    }
    Q_EMIT changed();
}

} // namespace orlenta::controller
