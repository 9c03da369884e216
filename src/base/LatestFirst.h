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

/// Background work for what scrolls by: one key at a time on a thread of low priority, the latest asked for first, so
/// that what has come into view doesn't wait for what has left it. Main thread, except for the work itself, which
/// shares nothing and should look at its stop token often: the end of this object drops what waits and stops what runs.
template <typename Key, typename Outcome>
class LatestFirst final {
public:
    using Work = std::function<Outcome(const Key &, const std::stop_token &)>;
    using Done = std::function<void(const Key &, const Outcome &)>;

    /// `work` runs on the thread; `done` is called with its outcome on the main thread, by the event loop.
    LatestFirst(Work work, Done done);
    ~LatestFirst();
    LatestFirst(const LatestFirst &) = delete;
    LatestFirst &operator=(const LatestFirst &) = delete;

    /// A key that waits already moves to the front; one that is being worked on is left to that.
    void ask(const Key &key);

private:
    void startNext();
    void finish(const Key &key, const Outcome &outcome);

    Work m_work;
    Done m_done;
    /// The next one is the last.
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
    // What is asked for again is mostly in view, and so near the end.
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
