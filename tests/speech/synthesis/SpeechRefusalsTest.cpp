#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "speech/synthesis/SpeechReplies.h"

namespace orlenta::speech {

namespace {

using test::LoopbackRequest;
using test::LoopbackServer;
using ::testing::ElementsAre;

SpeechApi::AudioResult speak(ServiceUnderTest &under, double stability, const char *audioFormat = "mp3") {
    under.defaults.setAudioFormat(QString::fromLatin1(audioFormat));
    TTSRequest request = helloRequest();
    request.setVoiceSettings({stability, 0.75, 0.0, 1.0});
    ElevenLabsService &service = under.service();
    return resultOf(service.speech().textToSpeech(service.access(), QStringLiteral("v1"), request));
}

QList<double> stabilitiesSent(const ServiceUnderTest &under) {
    QList<double> sent;
    for (const LoopbackRequest &request : under.server.requests("/v1/text-to-speech"))
        sent.append(QJsonDocument::fromJson(request.body)[QStringLiteral("voice_settings")][QStringLiteral("stability")]
                        .toDouble());
    return sent;
}

QByteArray stabilityRefusal(const QByteArray &message) {
    return LoopbackServer::reply(400,
                                 R"({"detail":{"status":"invalid_ttd_stability","message":")" + message + R"("}})");
}

/// Calls `happen` before each reply to a speech request.
void answerAfter(LoopbackServer &server, const QByteArray &reply, const std::function<void()> &happen) {
    server.handle("/v1/text-to-speech", [=](const LoopbackRequest &, QTcpSocket &socket) {
        happen();
        socket.write(reply);
        socket.disconnectFromHost();
    });
}

} // namespace

TEST(SpeechRefusals, AWebPageInPlaceOfAudioIsReportedAndMakesNoTake) {
    const QByteArray page = "<!DOCTYPE html>\n<html><body>Sign in to use this network.</body></html>";
    const QStringList before = cachedFiles();
    for (const char *format : {"mp3", "wav"}) {
        for (const char *type : {"text/html; charset=utf-8", "application/octet-stream"}) {
            ServiceUnderTest under;
            under.server.answer("/v1/text-to-speech", LoopbackServer::reply(200, page, type));
            const auto audio = requestSpeech(under, format);
            ASSERT_FALSE(audio);
            EXPECT_EQ(audio.error(), SpeechError::intercepted());
            EXPECT_EQ(formatsAsked(under).size(), 1);
        }
    }
    ServiceUnderTest under;
    under.server.answer("/v1/user", LoopbackServer::reply(200, page, "text/html"));
    under.connectAccount();
    EXPECT_EQ(under.service().errorMessage(), SpeechError::intercepted().description());
    EXPECT_EQ(cachedFiles(), before);
}

TEST(SpeechRefusals, AReplyThatCannotBeRawSamplesIsRefused) {
    const std::vector<QByteArray> replies{
        "",
        R"({"detail":"no"})",
        QByteArray("\x00\x01\xFFneither audio nor JSON\x80\x00", 27),
        "ID3" + QByteArray(1001, '\1'),
        "RIFF" + QByteArray(1000, '\1'),
    };
    for (const QByteArray &reply : replies) {
        ServiceUnderTest under;
        under.server.answer("/v1/text-to-speech", audioReply(reply));
        const auto audio = requestSpeech(under, "wav");
        ASSERT_FALSE(audio) << reply.constData();
        EXPECT_EQ(audio.error(), SpeechError::notAudio());
    }
}

TEST(SpeechRefusals, OnlyARefusalOfTheFormatLeadsToAnotherFormat) {
    const std::vector<std::pair<int, QByteArray>> cases{{400, "invalid_ttd_stability"}, {400, "text_too_long"},
                                                        {400, "voice_not_found"},       {400, "invalid_api_key"},
                                                        {402, "insufficient_credits"},  {403, "missing_permissions"}};
    for (const auto &[status, code] : cases) {
        ServiceUnderTest under;
        under.server.answer("/v1/text-to-speech", refusal(status, code));
        EXPECT_FALSE(requestSpeech(under, "wav"));
        EXPECT_THAT(formatsAsked(under), ElementsAre("pcm_44100")) << code.constData();
    }
}

TEST(SpeechRefusals, ARefusedStabilityIsReplacedOnceByTheNearestAllowedOneAndRemembered) {
    ServiceUnderTest under;
    const QByteArray mp3 = audioReply(toneMp3(under.folder));
    under.server.answerInTurn(
        "/v1/text-to-speech",
        {stabilityRefusal("Invalid TTD stability value. Must be one of: [0.0, 0.5, 1.0] (0.0 = Creative)"), mp3});
    EXPECT_TRUE(speak(under, 0.8));
    EXPECT_TRUE(speak(under, 0.3));
    EXPECT_THAT(stabilitiesSent(under), ElementsAre(0.8, 1.0, 0.5));

    ServiceUnderTest wordless;
    wordless.server.answer("/v1/text-to-speech", stabilityRefusal("no"));
    EXPECT_FALSE(speak(wordless, 0.3));
    EXPECT_THAT(stabilitiesSent(wordless), ElementsAre(0.3, 0.5)) << "once";

    ServiceUnderTest codeless;
    codeless.server.answerInTurn(
        "/v1/text-to-speech",
        {LoopbackServer::reply(400, R"({"detail":{"message":"Stability must be one of [0.2, 0.6]."}})"), refusal(403),
         mp3});
    EXPECT_TRUE(speak(codeless, 0.5, "wav"));
    EXPECT_THAT(stabilitiesSent(codeless), ElementsAre(0.5, 0.6, 0.6));
    EXPECT_THAT(formatsAsked(codeless), ElementsAre("pcm_44100", "pcm_44100", "mp3_44100_192"));
}

TEST(SpeechRefusals, AFallBackNeverReachesAnotherAddressOrAccount) {
    ServiceUnderTest under;
    LoopbackServer other;
    other.answer("/", audioReply(tonePcm()));
    answerAfter(under.server, refusal(403), [&] {
        under.service().useEndpoint(other.url());
        under.service().setApiKey(QStringLiteral("secret-key"));
    });
    const auto audio = requestSpeech(under, "wav");
    ASSERT_FALSE(audio);
    EXPECT_TRUE(audio.error().isCancelled());
    EXPECT_EQ(under.server.requests().size(), 1);
    EXPECT_TRUE(other.requests().isEmpty());
}

TEST(SpeechRefusals, ACostOfAnEarlierAccountIsNotCountedForTheNext) {
    ServiceUnderTest under(ServiceUnderTest::Waits::EndWhenTold);
    under.connectAccount();
    QTcpSocket *held = nullptr;
    under.server.handle("/v1/text-to-speech", [&held](const LoopbackRequest &, QTcpSocket &socket) { held = &socket; });
    bool isSpoken = false;
    ElevenLabsService &service = under.service();
    deliver<SpeechApi::AudioResult>(
        service.speech().textToSpeech(service.access(), QStringLiteral("v1"), helloRequest()),
        [&isSpoken](const SpeechApi::AudioResult &audio) { isSpoken = audio.hasValue(); });
    ASSERT_TRUE(ServiceUnderTest::becomes([&held] { return held != nullptr; }));
    service.setApiKey(QStringLiteral("other-key"));
    under.connectAccount();
    held->write(audioReply(toneMp3(under.folder)));
    held->disconnectFromHost();
    ASSERT_TRUE(ServiceUnderTest::becomes([&isSpoken] { return isSpoken; })) << "what was spoken is delivered";
    EXPECT_EQ(under.creditsText(), QStringLiteral("100 credits"));
}

TEST(SpeechRefusals, WithoutAKeyNothingIsSent) {
    ServiceUnderTest under;
    under.service().setApiKey({});
    EXPECT_EQ(requestSpeech(under, "wav").error(), SpeechError::notConnected());
    EXPECT_TRUE(under.server.requests().isEmpty());
}

TEST(SpeechRefusals, ACancelledOrAbandonedTransferLeavesNoFile) {
    const QStringList before = cachedFiles();
    const auto halfOfAReply = [](const LoopbackRequest &, QTcpSocket &socket) {
        socket.write("HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nContent-Length: 100000\r\n\r\n" +
                     QByteArray(50'000, '\xFF'));
    };
    using Preview = base::Result<GeneratedPreviewAudio, SpeechError>;
    for (const bool isCancelled : {true, false}) {
        ServiceUnderTest under;
        under.server.handle("/v1/text-to-speech", halfOfAReply);
        const auto cancellation = std::make_shared<Cancellation>();
        std::optional<SpeechError> error;
        ElevenLabsService &service = under.service();
        deliver<Preview>(service.speech().generateHQVoicePreview(service.access(), QStringLiteral("v1"),
                                                                 QStringLiteral("Hello"), QStringLiteral("eleven_v3"),
                                                                 cancellation),
                         [&error](const Preview &preview) { error = preview.error(); });
        ASSERT_TRUE(ServiceUnderTest::becomes([&before] { return cachedFiles().size() > before.size(); }));
        if (isCancelled)
            cancellation->cancel();
        else
            under.client.reset();
        ASSERT_TRUE(error);
        EXPECT_TRUE(error->isCancelled());
        EXPECT_EQ(cachedFiles(), before);
    }
}

} // namespace orlenta::speech
