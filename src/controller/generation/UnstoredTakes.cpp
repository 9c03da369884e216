#include "controller/generation/UnstoredTakes.h"

#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

#include "base/files/AtomicFile.h"
#include "base/files/PrivateFolders.h"
#include "base/files/RegularFile.h"
#include "base/LogCategories.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/takes/TakeEditing.h"
#include "model/LinePayload.h"

namespace orlenta::controller {
namespace {

using Entry = UnstoredTakes::Entry;

constexpr QLatin1String recordSuffix(".json");

/// What follows the clip's name in a file's name.
QString endOfName() {
    return QStringLiteral(" - %1.wav").arg(QUuid::createUuid().toString(QUuid::Id128).left(8));
}

/// The record is written as a line with the one take, in the form of the clipboard.
QByteArray encodeRecord(const model::ProjectId &project, const Entry &entry) {
    model::Take take;
    take.id = model::TakeId::create();
    take.filename = QFileInfo(entry.path).fileName();
    if (entry.context) {
        take.voiceId = entry.context->voiceId;
        take.presetId = entry.context->presetId;
        take.settingsSnapshot = entry.context->settings;
        take.characterCount = entry.context->characterCount;
    }
    model::ProjectLine line = model::ProjectLine::makeNew();
    line.lineId = entry.lineId;
    if (entry.context)
        line.voiceId = entry.context->voiceId;
    line.takes = {take};
    return model::encodeLinePayload({project, {line}});
}

std::optional<Entry> decodeRecord(const model::ProjectId &project, const QString &path) {
    const auto bytes = base::readWholeFile(path);
    const auto record = bytes ? model::decodeLinePayload(bytes.value()) : std::nullopt;
    if (!record || record->projectId != project || record->lines.isEmpty() || record->lines.first().takes.isEmpty())
        return std::nullopt;
    const model::ProjectLine &line = record->lines.first();
    const model::Take &take = line.takes.first();
    Entry entry{line.lineId, std::nullopt, path.chopped(recordSuffix.size())};
    const QString clip = QFileInfo(entry.path).fileName().chopped(endOfName().size());
    if (line.voiceId)
        entry.context =
            GenerationRequestContext{take.voiceId, take.presetId, take.settingsSnapshot, take.characterCount, clip};
    return entry;
}

/// Returns the new path, or the old one if the file couldn't be moved.
QString movedTo(const QString &folder, const QString &name, Entry entry, const model::ProjectId &project) {
    const QString source = std::exchange(entry.path, folder + u'/' + name);
    if (!QDir().mkpath(folder) || !base::moveAtomically(source, entry.path))
        return source;
    if (const auto written = base::writeAtomically(entry.path + recordSuffix, encodeRecord(project, entry)); !written)
        qCWarning(base::log::project, "[Generation] No record of the take: %s",
                  qUtf8Printable(written.error().description()));
    return entry.path;
}

void removeFiles(const Entry &entry) {
    QFile::remove(entry.path + recordSuffix);
    QFile::remove(entry.path);
}

} // namespace

UnstoredTakes::UnstoredTakes(ProjectController &controller, QObject *parent)
    : QObject(parent), m_controller(controller) {
    restore();
}

QString UnstoredTakes::folder() {
    return base::PrivateFolders::applicationSupport() + QStringLiteral("/Unstored Takes");
}

QCoro::Task<void> UnstoredTakes::keep(Entry entry) {
    const QPointer<UnstoredTakes> self(this);
    const QString clip = entry.context ? entry.context->clipName : QStringLiteral("Take");
    QFuture<QString> moving =
        QtConcurrent::run(movedTo, folder(), clip + endOfName(), entry, m_controller.project().projectId);
    entry.path = co_await moving;
    qCWarning(base::log::project, "[Generation] Take not stored, kept as %s", qUtf8Printable(entry.path));
    if (!self)
        co_return;
    m_entries.append(entry);
    tell();
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
            removeFiles(entry);
    }
    tell();
    Q_EMIT changed();
}

void UnstoredTakes::restore() {
    const QFileInfoList records = QDir(folder()).entryInfoList(
        {QStringLiteral("*.json")}, QDir::Files | QDir::NoSymLinks, QDir::Time | QDir::Reversed);
    for (const QFileInfo &record : records) {
        const auto entry = decodeRecord(m_controller.project().projectId, record.absoluteFilePath());
        if (!entry)
            continue;
        // The user may have deleted the audio.
        if (QFileInfo::exists(entry->path))
            m_entries.append(*entry);
        else
            QFile::remove(record.absoluteFilePath());
    }
    tell();
}

void UnstoredTakes::tell() {
    if (m_entries.isEmpty()) {
        m_controller.notices().withdraw(Notice::Kind::TakesUnstored);
        return;
    }
    const Entry &last = m_entries.constLast();
    const QString folder = QFileInfo(last.path).absolutePath();
    const QString text =
        m_entries.size() == 1
            ? QStringLiteral("1 generated take couldn't be stored in the project. It is kept in %1").arg(folder)
            : QStringLiteral("%1 generated takes couldn't be stored in the project. They are kept in %2")
                  .arg(m_entries.size())
                  .arg(folder);
    m_controller.notices().post({Notice::Kind::TakesUnstored, text, folder});
}

} // namespace orlenta::controller
