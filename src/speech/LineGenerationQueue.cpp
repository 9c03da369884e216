#include "speech/LineGenerationQueue.h"

#include <algorithm>

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>

namespace orlenta::speech {

LineGenerationQueue::LineGenerationQueue(QObject *parent) : QObject(parent) {}

void LineGenerationQueue::enqueue(const QList<model::LineId> &lineIds, Priority priority, const Perform &perform) {
    QList<Request> requests;
    for (const model::LineId &id : lineIds) {
        const bool waits = std::any_of(m_pending.cbegin(), m_pending.cend(),
                                       [&id](const Request &request) { return request.lineId == id; });
        if (id != m_activeLineId && !waits)
            requests.append({id, perform});
    }
    if (requests.isEmpty())
        return;
    if (priority == Priority::Prioritized)
        m_pending = requests + m_pending;
    else
        m_pending += requests;
    if (m_isActive)
        return;
    setActive(true);
    // Not at once: what the caller queues in the same turn may still overtake.
    QMetaObject::invokeMethod(
        this, [this] { work(); }, Qt::QueuedConnection);
}

QCoro::Task<void> LineGenerationQueue::work() {
    const QPointer<LineGenerationQueue> self(this);
    while (!m_pending.isEmpty()) {
        const Request request = m_pending.takeFirst();
        setActiveLineId(request.lineId);
        co_await request.perform(request.lineId);
        if (!self)
            co_return;
        setActiveLineId(std::nullopt);
    }
    setActive(false);
}

void LineGenerationQueue::setActive(bool active) {
    if (m_isActive == active)
        return;
    m_isActive = active;
    Q_EMIT isActiveChanged();
}

void LineGenerationQueue::setActiveLineId(std::optional<model::LineId> lineId) {
    if (m_activeLineId == lineId)
        return;
    m_activeLineId = lineId;
    Q_EMIT activeLineIdChanged();
}

} // namespace orlenta::speech
