#include "localvoices/workers/WorkerPool.h"

#include <algorithm>
#include <utility>

#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTimer>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

/// More than an hour of speech takes in any format.
constexpr qint64 mostOutput = qint64{512} << 20;

WorkerExit exitOf(int code) {
    switch (code) {
    case static_cast<int>(WorkerExit::Done):
        return WorkerExit::Done;
    case static_cast<int>(WorkerExit::UnusableInput):
        return WorkerExit::UnusableInput;
    default:
        return WorkerExit::Failed;
    }
}

WorkerResult resultOf(QProcess &process, QProcess::ExitStatus status) {
    WorkerResult result;
    result.exit = status == QProcess::CrashExit ? WorkerExit::Failed : exitOf(process.exitCode());
    const QByteArray output = process.readAllStandardOutput();
    if (result.exit == WorkerExit::Done)
        result.audio = output;
    else if (status == QProcess::CrashExit)
        result.complaint = u"The worker process crashed or took too long."_s;
    else
        result.complaint = QString::fromUtf8(output);
    if (result.exit == WorkerExit::Failed)
        qWarning("%s\n%s", qUtf8Printable(result.complaint), process.readAllStandardError().constData());
    return result;
}

} // namespace

WorkerPool::WorkerPool(QString program, QStringList arguments, int atOnce, std::chrono::milliseconds timeLimit,
                       QObject *parent)
    : QObject(parent), m_program(std::move(program)), m_arguments(std::move(arguments)), m_atOnce(atOnce),
      m_timeLimit(timeLimit) {}

WorkerPool::~WorkerPool() {
    m_waiting.clear();
    while (!m_running.empty())
        cancel(m_running.begin()->first);
}

int WorkerPool::jobCount() const {
    return static_cast<int>(m_waiting.size()) + static_cast<int>(m_running.size());
}

WorkerPool::JobId WorkerPool::start(const SpeechJob &job, Finished finished) {
    const JobId id = ++m_lastId;
    m_waiting.append({id, job.toBytes(), std::move(finished)});
    // Queued, so that `finished` is never called before the caller has the id.
    QMetaObject::invokeMethod(this, &WorkerPool::startNext, Qt::QueuedConnection);
    return id;
}

void WorkerPool::cancel(JobId id) {
    m_waiting.removeIf([id](const Waiting &w) { return w.id == id; });
    const auto running = m_running.find(id);
    if (running == m_running.end())
        return;
    QProcess *process = running->second.process;
    m_running.erase(running);
    process->disconnect(this);
    process->kill();
    process->waitForFinished();
    process->deleteLater();
    QMetaObject::invokeMethod(this, &WorkerPool::startNext, Qt::QueuedConnection);
}

void WorkerPool::startNext() {
    while (!m_waiting.isEmpty() && std::cmp_less(m_running.size(), m_atOnce))
        launch(m_waiting.takeFirst());
}

void WorkerPool::launch(Waiting waiting) {
    auto *process = new QProcess(this);
    const JobId id = waiting.id;
    m_running.emplace(id, Running{process, std::move(waiting.finished)});
    connect(process, &QProcess::finished, this,
            [this, id, process](int, QProcess::ExitStatus status) { finish(id, resultOf(*process, status)); });
    connect(process, &QProcess::errorOccurred, this, [this, id, process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish(id, {WorkerExit::Failed, {}, process->errorString()});
    });
    connect(process, &QProcess::readyReadStandardOutput, process, [process] {
        if (process->bytesAvailable() > mostOutput)
            process->kill();
    });
    QTimer::singleShot(m_timeLimit, process, &QProcess::kill);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"ORLENTA_LOCAL_VOICES_KEY"_s);
    process->setProcessEnvironment(environment);
    process->start(m_program, m_arguments);
    process->write(waiting.job);
    process->closeWriteChannel();
}

void WorkerPool::finish(JobId id, const WorkerResult &result) {
    const auto running = m_running.find(id);
    if (running == m_running.end())
        return;
    const Finished finished = std::move(running->second.finished);
    running->second.process->deleteLater();
    m_running.erase(running);
    startNext();
    finished(result);
}

} // namespace orlenta::localvoices
