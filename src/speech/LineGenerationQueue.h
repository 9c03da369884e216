#pragma once

#include <functional>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>

#include "model/Ids.h"

namespace orlenta::speech {

/// Takes lines to generation one at a time. Nothing is taken out of the queue: after a stop, each line that waited ends
/// at its turn without being generated. Closing the window drops what waits together with the queue. Main thread.
class LineGenerationQueue final : public QObject {
    Q_OBJECT
public:
    /// Generates one line. Reports its own failures; the queue only waits for its end.
    using Perform = std::function<QCoro::Task<void>(model::LineId)>;

    /// Whether new requests wait behind the others, or overtake what waits, but never what runs.
    enum class Priority { Normal, Prioritized };

    struct Request {
        model::LineId lineId;
        Perform perform;
        bool isStopped = false;
    };

    /// Requests since the queue became active; both numbers are 0 while it is idle.
    struct Progress {
        /// The request that runs, counted from 1.
        int number = 0;
        /// Those that ran, run or will run.
        int total = 0;

        friend bool operator==(const Progress &, const Progress &) = default;
    };

    explicit LineGenerationQueue(QObject *parent = nullptr);

    /// True from the start of a worker until it has emptied the queue.
    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// The requests that wait, the next one first, with those that were stopped.
    [[nodiscard]] const QList<Request> &pending() const { return m_pending; }
    [[nodiscard]] std::optional<model::LineId> activeLineId() const { return m_activeLineId; }
    /// Whether the line runs, or waits and will run.
    [[nodiscard]] bool holds(const model::LineId &id) const;
    [[nodiscard]] Progress progress() const;
    /// Whether stop() would stop anything.
    [[nodiscard]] bool canStop() const;

    /// Queues the lines in their order, leaving out those that run or wait already. An id that stands twice in
    /// `lineIds` is queued twice.
    void enqueue(const QList<model::LineId> &lineIds, Priority priority, const Perform &perform);
    /// Lets the line that runs finish, and none of those that wait now start.
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
    /// Requests that have run or run, since the queue became active.
    int m_begun = 0;
};

} // namespace orlenta::speech
