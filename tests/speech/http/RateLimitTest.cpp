#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "speech/account/ServiceUnderTest.h"
#include "speech/http/ResponseCheck.h"
#include "speech/http/ServiceGateway.h"

namespace orlenta::speech {

namespace {

using namespace std::chrono_literals;
using test::LoopbackServer;
using ::testing::ElementsAre;

QByteArray busy(const QByteArray &retryAfter) {
    return LoopbackServer::reply(429, "", "application/json", {"Retry-After: " + retryAfter});
}

} // namespace

TEST(RateLimit, AnAskedForDelayCountsBetweenTheBackoffAndTenSeconds) {
    ServiceUnderTest under;
    under.server.answerInTurn("/v1/user", {busy("2.5"), busy("0"), busy("3"), LoopbackServer::json(userJson(1))});
    under.connectAccount();
    EXPECT_TRUE(under.service().isAuthenticated());
    EXPECT_THAT(under.delays, ElementsAre(2500ms, 2000ms, 4000ms));
}

TEST(RateLimit, FourRefusalsInARowEndInTheBusyMessage) {
    ServiceUnderTest under;
    under.server.answer("/v1/user", busy("120"));
    under.connectAccount();
    EXPECT_TRUE(under.service().errorMessage().startsWith(QStringLiteral("ElevenLabs is busy right now\n\n")));
    EXPECT_EQ(under.server.requests("/v1/user").size(), 4);
    EXPECT_THAT(under.delays, ElementsAre(10000ms, 10000ms, 10000ms));
}

TEST(RateLimit, OtherRefusalsAndBrokenConnectionsAreNotTriedAgain) {
    ServiceUnderTest under;
    under.server.answer("/v1/user", LoopbackServer::reply(503, ""));
    under.connectAccount();
    under.server.handle("/v1/user", [](const auto &, QTcpSocket &socket) { socket.abort(); });
    under.connectAccount();
    EXPECT_TRUE(under.delays.empty());
}

TEST(RateLimit, CancellingDuringAWaitSendsNothingMore) {
    ServiceUnderTest under(ServiceUnderTest::Waits::EndWhenTold);
    ServiceGateway gateway(under.timing);
    gateway.setAccess(under.server.url(), QStringLiteral("key"));
    under.server.answer("/v1/user", busy("1"));
    const auto cancellation = std::make_shared<Cancellation>();
    bool cancelled = false;
    using Body = base::Result<QByteArray, SpeechError>;
    deliver<Body>(gateway.get(gateway.access(), QStringLiteral("/v1/user"), cancellation),
                  [&cancelled](const Body &body) { cancelled = !body && body.error().isCancelled(); });
    ASSERT_TRUE(ServiceUnderTest::becomes([&under] { return !under.waiting.empty(); }));
    cancellation->cancel();
    EXPECT_TRUE(cancelled);
    under.endNextWait();
    EXPECT_EQ(under.server.requests().size(), 1);
}

TEST(RateLimit, RetryAfterIsReadAsSecondsOrAsADate) {
    const std::chrono::system_clock::time_point now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 8h;
    const std::vector<std::pair<const char *, std::optional<double>>> cases{
        {"", std::nullopt},
        {" 2.5 \n", 2.5},
        {"-3", 0.0},
        {"1e1", 10.0},
        {"Sat, 21 Nov 2026 08:00:07 GMT", 7.0},
        {"Sat, 21 Nov 2026 07:00:00 GMT", 0.0},
        {"soon", std::nullopt},
        {"2026-11-21T08:00:07Z", std::nullopt},
    };
    for (const auto &[header, expected] : cases)
        EXPECT_EQ(parseRetryAfter(header, now), expected) << header;
}

TEST(RateLimit, ARetryDateCountsInAnHourThatTheLocalClockSkips) {
    const QByteArray zone = qgetenv("TZ");
    const std::chrono::system_clock::time_point now = std::chrono::sys_days(std::chrono::year(2024) / 3 / 31) + 2h;
    qputenv("TZ", "Europe/Berlin");
    EXPECT_EQ(parseRetryAfter("Sun, 31 Mar 2024 02:00:07 GMT", now), 7.0);
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

TEST(RateLimit, EveryRefusalOfAKeyIsToldApart) {
    const auto kindOf = [](const QByteArray &body) {
        HttpReply reply;
        reply.status = 401;
        reply.body = body;
        return checkResponse(reply, {})->kind();
    };
    using Kind = ElevenLabsError::Kind;
    EXPECT_EQ(kindOf(R"({"detail":{"status":"quota_exceeded","message":"Quota used"}})"), Kind::QuotaExceeded);
    EXPECT_EQ(kindOf(R"({"detail":{"status":"quota_exceeded"}})"), Kind::Unauthorized);
    EXPECT_EQ(kindOf(R"({"detail":{"status":"missing_permissions"}})"), Kind::MissingPermissions);
    EXPECT_EQ(kindOf(R"({"detail":"no"})"), Kind::Unauthorized);
    EXPECT_EQ(kindOf("[]"), Kind::Unauthorized);
    EXPECT_EQ(kindOf(""), Kind::Unauthorized);
    EXPECT_EQ(permissionName(QStringLiteral("The API key is missing the permission text_to_speech to do this")),
              QStringLiteral("text_to_speech"));
    EXPECT_EQ(permissionName(QStringLiteral("Missing the permission voices_read")), std::nullopt);
    EXPECT_EQ(permissionName(QStringLiteral("is missing the permission \"x\"")), std::nullopt);
}

} // namespace orlenta::speech
