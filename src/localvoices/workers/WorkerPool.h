#pragma once

#include <chrono>
#include <functional>
#include <map>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "localvoices/voices/SpeechJob.h"
#include "localvoices/workers/SpeechWorker.h"

class QProcess;

namespace orlenta::localvoices {

struct WorkerResult {
    WorkerExit exit = WorkerExit::Failed;
    QByteArray audio;
    /// The reason unless `exit` is Done.
    QString complaint;
};

/// Runs each job in a process of its own, a limited number at a time. Main thread.
class WorkerPool final : public QObject {
    Q_OBJECT

public:
    using Finished = std::function<void(const WorkerResult &)>;
    using JobId = int;

    /// Starts `program` with `arguments` for each job and passes the job on standard input.
    WorkerPool(QString program, QStringList arguments, int atOnce, std::chrono::milliseconds timeLimit,
               QObject *parent = nullptr);
    ~WorkerPool() override;

    [[nodiscard]] int atOnce() const { return m_atOnce; }
    /// Running and waiting jobs.
    [[nodiscard]] int jobCount() const;

    /// Calls `finished` once, never before it returns; not at all if the job is cancelled.
    JobId start(const SpeechJob &job, Finished finished);
    /// Kills the job's process, if it is running, and drops the job.
    void cancel(JobId id);

private:
    struct Waiting {
        JobId id;
        QByteArray job;
        Finished finished;
    };

    void startNext();
    void launch(Waiting waiting);
    void finish(JobId id, const WorkerResult &result);

    QString m_program;
    QStringList m_arguments;
    int m_atOnce;
    std::chrono::milliseconds m_timeLimit;
    JobId m_lastId = 0;
    QList<Waiting> m_waiting;
    struct Running {
        QProcess *process;
        Finished finished;
    };
    std::map<JobId, Running> m_running;
};

} // namespace orlenta::localvoices
