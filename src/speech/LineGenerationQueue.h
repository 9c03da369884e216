#pragma once

#include <functional>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>

#include "model/Ids.h"

namespace orlenta::speech {

/// Generates lines one at a time. Requests are never removed: after a stop, each waiting request ends at its turn
/// without being performed. Closing the window drops the queue with everything in it. Main thread.
class LineGenerationQueue final : public QObject {
    Q_OBJECT
public:
    /// Generates one line and reports its own failures; the queue only waits for it to end.
    using Perform = std::function<QCoro::Task<void>(model::LineId)>;

    /// Whether new requests go to the end, or ahead of all waiting requests. The running one is never interrupted.
    enum class Priority { Normal, Prioritized };

    struct Request {
        model::LineId lineId;
        Perform perform;
        bool isStopped = false;
    };

    /// Counts since the queue became active; both are 0 while it is idle.
    struct Progress {
        /// The running request, counted from 1.
        int number = 0;
        /// All requests: finished, running and still to run.
        int total = 0;

        friend bool operator==(const Progress &, const Progress &) = default;
    };

    explicit LineGenerationQueue(QObject *parent = nullptr);

    /// True while a worker is emptying the queue.
    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// The waiting requests in order, including stopped ones.
    [[nodiscard]] const QList<Request> &pending() const { return m_pending; }
    [[nodiscard]] std::optional<model::LineId> activeLineId() const { return m_activeLineId; }
    /// Whether the line is running, or waiting and not stopped.
    [[nodiscard]] bool holds(const model::LineId &id) const;
    [[nodiscard]] Progress progress() const;
    /// Whether there are requests to stop.
    [[nodiscard]] bool canStop() const;

    /// Queues the lines in order, except those already running or waiting. An id that occurs twice in `lineIds` is
    /// queued twice.
    void enqueue(const QList<model::LineId> &lineIds, Priority priority, const Perform &perform);
    /// Lets the running line finish and stops all waiting ones.
    void stop();

Q_SIGNALS:
    void isActiveChanged();
    void activeLineIdChanged();
    void progressChanged();

private:
    QCoro::Task<void> work();
    void setActive(bool active);
    void setActiveLineId(std::optional<model::LineId> lineId);

    bool m_isActive = false;
    QList<Request> m_pending;
    std::optional<model::LineId> m_activeLineId;
    /// Finished and running requests since the queue became active.
    int m_begun = 0;
};

} // namespace orlenta::speech
