#include "base/LogFile.h"

#include <cstdio>
#include <mutex>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace orlenta::base {

namespace {

/// State of the message handler, which is a plain function and called from every thread.
struct OpenLog {
    std::mutex guard;
    QFile file;
    QtMessageHandler before = nullptr;
};

OpenLog &openLog() {
    static OpenLog log;
    return log;
}

void openAt(OpenLog &log, const QString &path) {
    log.file.setFileName(path);
    if (log.file.open(QFile::WriteOnly | QFile::Append))
        log.file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void setAside(OpenLog &log) {
    const QString path = log.file.fileName();
    const QString older = path + QStringLiteral(".1");
    log.file.close();
    QFile::remove(older);
    QFile::rename(path, older);
    openAt(log, path);
}

void writeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    OpenLog &log = openLog();
    const QByteArray line = (QDateTime::currentDateTime().toString(Qt::ISODateWithMs) + u' ' +
                             QString::fromUtf8(context.category) + QStringLiteral(": ") + message + u'\n')
                                .toUtf8();
    if (type != QtDebugMsg && type != QtInfoMsg)
        std::fputs((message + u'\n').toLocal8Bit().constData(), stderr);
    const std::lock_guard guard(log.guard);
    if (!log.file.isOpen())
        return;
    // If the disk is full we lose log lines, nothing else.
    log.file.write(line);
    log.file.flush();
    if (log.file.size() > LogFile::largestSize)
        setAside(log);
}

} // namespace

QString LogFile::defaultPath() {
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (state.isEmpty() || QDir::isRelativePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/orlenta/orlenta.log");
}

LogFile::LogFile() : LogFile(defaultPath()) {}

LogFile::LogFile(const QString &path) {
    QDir().mkpath(QFileInfo(path).path());
    OpenLog &log = openLog();
    {
        const std::lock_guard guard(log.guard);
        openAt(log, path);
    }
    log.before = qInstallMessageHandler(writeMessage);
}

LogFile::~LogFile() {
    OpenLog &log = openLog();
    qInstallMessageHandler(log.before);
    const std::lock_guard guard(log.guard);
    log.file.close();
}

} // namespace orlenta::base
