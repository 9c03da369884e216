#include "speech/LineGenerationQueue.h"

#include <algorithm>

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>

namespace orlenta::speech {

LineGenerationQueue::LineGenerationQueue(QObject *parent) : QObject(parent) {}

bool LineGenerationQueue::holds(const model::LineId &id) const {
    return id == m_activeLineId || std::any_of(m_pending.cbegin(), m_pending.cend(), [&id](const Request &request) {
               return request.lineId == id && !request.isStopped;
           });
}

LineGenerationQueue::Progress LineGenerationQueue::progress() const {
    if (!m_isActive)
        return {};
    const auto waiting =
        std::count_if(m_pending.cbegin(), m_pending.cend(), [](const Request &request) { return !request.isStopped; });
    const int total = m_begun + static_cast<int>(waiting);
    // Until the worker starts, the first request counts as running.
    return {std::min(std::max(1, m_begun), total), total};
}

bool LineGenerationQueue::canStop() const {
    return std::any_of(m_pending.cbegin(), m_pending.cend(), [](const Request &request) { return !request.isStopped; });
}

void LineGenerationQueue::enqueue(const QList<model::LineId> &lineIds, Priority priority, const Perform &perform) {
    QList<Request> requests;
    for (const model::LineId &id : lineIds) {
        if (!holds(id))
            requests.append({id, perform});
    }
    if (requests.isEmpty())
        return;
    if (priority == Priority::Prioritized)
        m_pending = requests + m_pending;
    else
        m_pending += requests;
    if (m_isActive) {
        Q_EMIT progressChanged();
        return;
    }
    setActive(true);
    // Queued, so that a prioritized request made in the same turn can still come first.
    QMetaObject::invokeMethod(
        this, [this] { work(); }, Qt::QueuedConnection);
}

void LineGenerationQueue::stop() {
    if (!canStop())
        return;
    for (Request &request : m_pending)
        request.isStopped = true;
    Q_EMIT progressChanged();
}

QCoro::Task<void> LineGenerationQueue::work() {
    const QPointer<LineGenerationQueue> self(this);
    while (!m_pending.isEmpty()) {
        const Request request = m_pending.takeFirst();
        if (request.isStopped)
            continue;
        ++m_begun;
        setActiveLineId(request.lineId);
        Q_EMIT progressChanged();
        co_await request.perform(request.lineId);
        if (!self)
            co_return;
        setActiveLineId(std::nullopt);
    }
    m_begun = 0;
    setActive(false);
}

void LineGenerationQueue::setActive(bool active) {
    if (m_isActive == active)
        return;
    m_isActive = active;
    Q_EMIT isActiveChanged();
    Q_EMIT progressChanged();
}

void LineGenerationQueue::setActiveLineId(std::optional<model::LineId> lineId) {
    if (m_activeLineId == lineId)
        return;
    m_activeLineId = lineId;
    Q_EMIT activeLineIdChanged();
}

} // namespace orlenta::speech
