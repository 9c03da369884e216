#pragma once

#include <functional>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>

#include "model/Ids.h"

namespace orlenta::speech {

/// Takes lines to generation one at a time. What is queued runs to its end: there is no cancel, and closing the window
/// drops what waits together with the queue. Main thread.
class LineGenerationQueue final : public QObject {
    Q_OBJECT
public:
    /// Generates one line. Reports its own failures; the queue only waits for its end.
    using Perform = std::function<QCoro::Task<void>(model::LineId)>;

    /// Whether new requests wait behind the others or overtake what waits, but never what runs.
    enum class Priority { Normal, Prioritized };

    struct Request {
        model::LineId lineId;
        Perform perform;
    };

    explicit LineGenerationQueue(QObject *parent = nullptr);

    /// True from the start of a worker until it has emptied the queue.
    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// The requests that wait, the next one first.
    [[nodiscard]] const QList<Request> &pending() const { return m_pending; }
    [[nodiscard]] std::optional<model::LineId> activeLineId() const { return m_activeLineId; }

    /// Queues the lines in their order, leaving out those that run or wait already. An id that stands twice in
    /// `lineIds` is queued twice.
    void enqueue(const QList<model::LineId> &lineIds, Priority priority, const Perform &perform);

Q_SIGNALS:
    void isActiveChanged();
    void activeLineIdChanged();

private:
    QCoro::Task<void> work();
    void setActive(bool active);
    void setActiveLineId(std::optional<model::LineId> lineId);

    bool m_isActive = false;
    QList<Request> m_pending;
    std::optional<model::LineId> m_activeLineId;
};

} // namespace orlenta::speech
