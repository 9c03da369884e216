#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include "base/UserDefaults.h"
#include "speech/account/AccountReplies.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/KeychainHelper.h"
#include "speech/synthesis/SpeechApi.h"
#include "support/LoopbackServer.h"

namespace orlenta::speech {

constexpr int eventLimit = 30'000;

/// Passes the result of `task` to `receive`.
template <typename T>
QCoro::Task<void> deliver(QCoro::Task<T> task, std::function<void(const T &)> receive) {
    const T value = co_await task;
    receive(value);
}

/// Sets `ended` when `task` ends.
inline QCoro::Task<void> noteEnd(QCoro::Task<void> task, bool *ended) {
    co_await task;
    *ended = true;
}

/// The result of `task`; runs the event loop until it ends.
template <typename T>
[[nodiscard]] T resultOf(QCoro::Task<T> task) {
    std::optional<T> result;
    deliver<T>(std::move(task), [&result](const T &value) { result.emplace(value); });
    if (!QTest::qWaitFor([&result] { return result.has_value(); }, eventLimit))
        qFatal("a task doesn't end");
    return *result;
}

/// A client and its server. The clock stands still until a test moves it. The client's waits take no time: each is
/// recorded, and ends in the next turn of the event loop or when the test ends it.
struct ServiceUnderTest {
    enum class Waits { EndAtOnce, EndWhenTold };

    explicit ServiceUnderTest(Waits waits = Waits::EndAtOnce) {
        timing.clock = [this] { return now; };
        timing.callLater = [this, waits](std::chrono::milliseconds delay, const std::function<void()> &callback) {
            delays.push_back(delay);
            if (waits == Waits::EndAtOnce)
                QTimer::singleShot(0, callback);
            else
                waiting.push_back(callback);
        };
        answerAccount(server);
    }

    /// The client, created at the first call so that a test can change `timing` before.
    ElevenLabsService &service() {
        if (!client) {
            client = std::make_unique<ElevenLabsService>(defaults, credentials, nullptr, timing);
            client->useEndpoint(server.url());
            client->setApiKey(QStringLiteral("secret-key"));
        }
        return *client;
    }

    [[nodiscard]] QString creditsText() { return service().user() ? service().user()->creditsText() : QString(); }
    void connectAccount() { QCoro::waitFor(service().connectAccount(ElevenLabsService::KeychainErrors::Show)); }

    void endNextWait() {
        const auto callback = waiting.front();
        waiting.pop_front();
        callback();
    }

    template <typename Condition>
    [[nodiscard]] static bool becomes(Condition condition) {
        return QTest::qWaitFor(condition, eventLimit);
    }

    test::LoopbackServer server;
    QTemporaryDir folder;
    base::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.ini"))};
    KeychainHelper credentials;
    std::chrono::system_clock::time_point now{std::chrono::seconds(1'800'000'000)};
    SpeechTiming timing;
    std::deque<std::chrono::milliseconds> delays;
    std::deque<std::function<void()>> waiting;
    std::unique_ptr<ElevenLabsService> client;
};

} // namespace orlenta::speech
