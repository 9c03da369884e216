#include "speech/account/ElevenLabsService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "speech/account/ServiceUnderTest.h"

namespace orlenta::speech {

namespace {

using namespace std::chrono_literals;
using test::LoopbackRequest;
using test::LoopbackServer;
using ::testing::ElementsAre;

/// Holds the replies to `target` until they are released.
class Gate {
public:
    Gate(LoopbackServer &server, const QByteArray &target) {
        server.handle(target, [this](const LoopbackRequest &, QTcpSocket &socket) { m_sockets.append(&socket); });
    }
    [[nodiscard]] bool holds(qsizetype count) const { return m_sockets.size() == count; }
    void release(qsizetype index, const QByteArray &reply) {
        m_sockets.at(index)->write(reply);
        m_sockets.at(index)->disconnectFromHost();
    }

private:
    QList<QTcpSocket *> m_sockets;
};

} // namespace

TEST(ElevenLabsService, ConnectingFetchesTheAccountAndPicksTheFirstVoice) {
    ServiceUnderTest under;
    under.connectAccount();
    ElevenLabsService &service = under.service();
    EXPECT_TRUE(service.isAuthenticated());
    EXPECT_FALSE(service.isLoading());
    EXPECT_TRUE(service.errorMessage().isEmpty());
    EXPECT_EQ(under.creditsText(), QStringLiteral("100 credits"));
    EXPECT_EQ(service.availableVoiceIds(), (QSet<QString>{QStringLiteral("v1"), QStringLiteral("v2")}));
    EXPECT_EQ(service.voiceSelection().selectedVoiceName(), QStringLiteral("Rachel"));
    EXPECT_EQ(service.voiceSelection().selectedVoiceColor().hex(), QStringLiteral("#E63D3D"));
    EXPECT_EQ(service.voices().first().labels->value(QStringLiteral("gender")), QStringLiteral("female"));
    const auto requests = under.server.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests.at(0).headers.value("xi-api-key"), "secret-key");
    EXPECT_EQ(requests.at(1).target, "/v1/voices");
    EXPECT_FALSE(requests.at(1).headers.contains("cookie"));
}

TEST(ElevenLabsService, WithoutAKeyNothingIsAsked) {
    ServiceUnderTest under;
    under.service().setApiKey({});
    under.connectAccount();
    EXPECT_TRUE(under.server.requests().isEmpty());
    EXPECT_EQ(under.service().sessionEpoch(), 1) << "only the change of the endpoint counts";
}

TEST(ElevenLabsService, ASignOutDropsTheResultOfARunningConnect) {
    ServiceUnderTest under;
    Gate gate(under.server, "/v1/voices");
    bool ended = false;
    noteEnd(under.service().connectAccount(ElevenLabsService::KeychainErrors::Show), &ended);
    ASSERT_TRUE(ServiceUnderTest::becomes([&gate] { return gate.holds(1); }));
    QCoro::waitFor(under.service().disconnectAccount());
    gate.release(0, LoopbackServer::json(voicesJson()));
    ASSERT_TRUE(ServiceUnderTest::becomes([&ended] { return ended; }));
    EXPECT_FALSE(under.service().isAuthenticated());
    EXPECT_TRUE(under.service().apiKey().isEmpty());
    EXPECT_FALSE(under.service().user());
}

TEST(ElevenLabsService, OfTwoConnectsTheLaterWinsEvenWhenTheEarlierFailsLast) {
    ServiceUnderTest under;
    Gate gate(under.server, "/v1/user");
    bool firstEnded = false;
    noteEnd(under.service().connectAccount(ElevenLabsService::KeychainErrors::Show), &firstEnded);
    under.service().connectAccount(ElevenLabsService::KeychainErrors::Show);
    ASSERT_TRUE(ServiceUnderTest::becomes([&gate] { return gate.holds(2); }));
    gate.release(1, LoopbackServer::json(userJson(5)));
    ASSERT_TRUE(ServiceUnderTest::becomes([&under] { return under.service().isAuthenticated(); }));
    gate.release(0, LoopbackServer::reply(401, ""));
    ASSERT_TRUE(ServiceUnderTest::becomes([&firstEnded] { return firstEnded; }));
    EXPECT_TRUE(under.service().isAuthenticated());
    EXPECT_TRUE(under.service().errorMessage().isEmpty());
}

TEST(ElevenLabsService, AFailedRefreshSaysSoAndKeepsTheConnection) {
    ServiceUnderTest under;
    under.connectAccount();
    under.server.answer("/v1/voices", LoopbackServer::reply(500, R"({"detail":"boom"})"));
    QCoro::waitFor(under.service().refreshAccount());
    EXPECT_EQ(under.service().errorMessage(), QStringLiteral("Failed to refresh: HTTP error 500: boom"));
    EXPECT_TRUE(under.service().isAuthenticated());
    EXPECT_EQ(under.service().voices().size(), 2);
}

TEST(ElevenLabsService, AnEstimateStandsUntilTheServiceCatchesUpOrTwentySecondsPass) {
    ServiceUnderTest under(ServiceUnderTest::Waits::EndWhenTold);
    under.connectAccount();
    const auto countAfterLook = [&under](int serverCount) {
        const qsizetype before = under.server.requests("/v1/user").size();
        const std::size_t waitsBefore = under.delays.size();
        under.server.answer("/v1/user", LoopbackServer::json(userJson(serverCount)));
        if (!under.waiting.empty())
            under.endNextWait();
        EXPECT_TRUE(ServiceUnderTest::becomes(
            [&] { return under.server.requests("/v1/user").size() > before && under.delays.size() > waitsBefore; }));
        return under.service().user()->subscription.characterCount;
    };
    under.service().scheduleUsageRefresh(QStringLiteral("text-to-speech"), 40, UsageEstimate::Apply);
    EXPECT_EQ(under.creditsText(), QStringLiteral("140 credits"));
    EXPECT_EQ(countAfterLook(100), 140);
    under.now += 19s;
    EXPECT_EQ(countAfterLook(120), 140);
    under.now += 1s;
    EXPECT_EQ(countAfterLook(110), 110);

    under.service().scheduleUsageRefresh(QStringLiteral("text-to-speech"), 10, UsageEstimate::Apply);
    under.waiting.clear();
    EXPECT_EQ(under.creditsText(), QStringLiteral("120 credits"));
    EXPECT_EQ(countAfterLook(120), 120);
    EXPECT_EQ(countAfterLook(90), 90) << "a count that caught up ended the estimate";
}

TEST(ElevenLabsService, FiveLooksFollowAGenerationAndANewOneStartsThemAgain) {
    ServiceUnderTest under(ServiceUnderTest::Waits::EndWhenTold);
    under.connectAccount();
    under.service().scheduleUsageRefresh(QStringLiteral("a"), 0, UsageEstimate::Skip);
    ASSERT_TRUE(ServiceUnderTest::becomes([&under] { return under.waiting.size() == 1; }));
    under.service().scheduleUsageRefresh(QStringLiteral("b"), 0, UsageEstimate::Skip);
    under.server.answer("/v1/user", LoopbackServer::reply(500, ""));
    under.endNextWait();
    for (std::size_t looks = 1; looks < 5; ++looks) {
        ASSERT_TRUE(ServiceUnderTest::becomes([&under] { return under.waiting.size() == 1; }));
        under.endNextWait();
    }
    const qsizetype connectAndFirstSeries = 2;
    ASSERT_TRUE(ServiceUnderTest::becomes(
        [&under] { return under.server.requests("/v1/user").size() == connectAndFirstSeries + 5; }));
    EXPECT_THAT(under.delays, ElementsAre(1500ms, 1500ms, 3500ms, 10000ms, 15000ms));
    EXPECT_TRUE(under.service().errorMessage().isEmpty()) << "a failed look is nobody's business";
}

TEST(ElevenLabsService, TheTierTellsLooselyWhetherUncompressedAudioIsPaidFor) {
    const std::vector<std::pair<QByteArray, bool>> tiers{{"free", false},       {"starter", false}, {"creator", false},
                                                         {"Pro", true},         {"scale", true},    {"promo", true},
                                                         {"Enterprise X", true}};
    ServiceUnderTest under;
    EXPECT_FALSE(under.service().supportsPCMOutput());
    for (const auto &[tier, paid] : tiers) {
        under.server.answer("/v1/user", LoopbackServer::json(userJson(1, tier)));
        under.connectAccount();
        EXPECT_EQ(under.service().supportsPCMOutput(), paid) << tier.constData();
    }
}

TEST(ElevenLabsService, AKeyWithoutAKeyringSurvivesASwitchToAnotherEndpoint) {
    ServiceUnderTest under;
    ElevenLabsService &service = under.service();
    service.useEndpoint(under.server.url(), ElevenLabsService::KeyKeeping::Keyring);
    service.setApiKey(QStringLiteral("typed-key"));
    under.connectAccount();
    ASSERT_TRUE(service.isAuthenticated());
    service.useEndpoint(QUrl(QStringLiteral("http://127.0.0.1:1")), ElevenLabsService::KeyKeeping::SessionOnly);
    EXPECT_TRUE(service.apiKey().isEmpty());
    service.useEndpoint(under.server.url(), ElevenLabsService::KeyKeeping::Keyring);
    QCoro::waitFor(service.connectStoredAccount());
    EXPECT_TRUE(service.isAuthenticated());
    EXPECT_EQ(service.apiKey(), QStringLiteral("typed-key"));
    QCoro::waitFor(service.disconnectAccount());
    QCoro::waitFor(service.connectStoredAccount());
    EXPECT_TRUE(service.apiKey().isEmpty()) << "a sign-out forgets it";
}

TEST(ElevenLabsService, APlanIsNamedAsPeopleSayIt) {
    const std::vector<std::pair<const char *, const char *>> names{
        {"free", "Free"}, {"local_pro", "Local Pro"}, {"growing_business", "Growing Business"}, {"", ""}};
    for (const auto &[tier, name] : names)
        EXPECT_EQ((Subscription{QString::fromLatin1(tier), 0, 0, {}}.planName()), QString::fromLatin1(name));
}

} // namespace orlenta::speech
