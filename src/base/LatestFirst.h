#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <utility>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>

namespace orlenta::base {

/// Runs background work one key at a time on a low-priority thread, most recent request first: when the user scrolls,
/// the rows in view don't wait for the rows that have left it. Call on the main thread. The work itself shares no state
/// and should check its stop token often; the destructor drops queued keys and stops the running one.
template <typename Key, typename Outcome>
class LatestFirst final {
public:
    using Work = std::function<Outcome(const Key &, const std::stop_token &)>;
    using Done = std::function<void(const Key &, const Outcome &)>;

    /// `work` runs on the background thread; the event loop then calls `done` on the main thread with the outcome.
    LatestFirst(Work work, Done done);
    ~LatestFirst();
    LatestFirst(const LatestFirst &) = delete;
    LatestFirst &operator=(const LatestFirst &) = delete;

    /// Moves a key that is already queued to the front. Does nothing if the key is being worked on.
    void ask(const Key &key);

private:
    void startNext();
    void finish(const Key &key, const Outcome &outcome);

    Work m_work;
    Done m_done;
    /// A stack: the last key is next.
    QList<Key> m_waiting;
    std::optional<Key> m_running;
    std::stop_source m_stop;
    QObject m_mainThread;
    QThreadPool m_thread;
};

template <typename Key, typename Outcome>
LatestFirst<Key, Outcome>::LatestFirst(Work work, Done done) : m_work(std::move(work)), m_done(std::move(done)) {
    m_thread.setMaxThreadCount(1);
    m_thread.setThreadPriority(QThread::LowPriority);
}

template <typename Key, typename Outcome>
LatestFirst<Key, Outcome>::~LatestFirst() {
    m_stop.request_stop();
    m_thread.waitForDone();
}

template <typename Key, typename Outcome>
void LatestFirst<Key, Outcome>::ask(const Key &key) {
    if (m_running == key)
        return;
    // Repeated requests are mostly for visible rows, which sit near the end.
    if (const qsizetype at = m_waiting.lastIndexOf(key); at >= 0)
        m_waiting.removeAt(at);
    m_waiting.append(key);
    startNext();
}

template <typename Key, typename Outcome>
void LatestFirst<Key, Outcome>::startNext() {
    if (m_running || m_waiting.isEmpty())
        return;
    m_running = m_waiting.takeLast();
    m_thread.start([this, key = *m_running, stop = m_stop.get_token()] {
        Outcome outcome = m_work(key, stop);
        QMetaObject::invokeMethod(
            &m_mainThread, [this, key, outcome = std::move(outcome)] { finish(key, outcome); }, Qt::QueuedConnection);
    });
}

template <typename Key, typename Outcome>
void LatestFirst<Key, Outcome>::finish(const Key &key, const Outcome &outcome) {
    m_running.reset();
    startNext();
    m_done(key, outcome);
}

} // namespace orlenta::base
