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
    /// What went wrong, unless `exit` is Done.
    QString complaint;
};

/// Runs jobs in processes of their own, so many at once and the rest in turn. Main thread.
class WorkerPool final : public QObject {
    Q_OBJECT

public:
    using Finished = std::function<void(const WorkerResult &)>;
    using JobId = int;

    /// `program` is started with `arguments` for each job and given the job on its standard input.
    WorkerPool(QString program, QStringList arguments, int atOnce, std::chrono::milliseconds timeLimit,
               QObject *parent = nullptr);
    ~WorkerPool() override;

    [[nodiscard]] int atOnce() const { return m_atOnce; }
    /// Jobs under way and waiting.
    [[nodiscard]] int jobCount() const;

    /// Calls `finished` once, later, unless the job is cancelled.
    JobId start(const SpeechJob &job, Finished finished);
    /// Ends the job's process, if there is one, and forgets the job.
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
