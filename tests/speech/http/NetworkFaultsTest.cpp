#include <functional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslServer>
#include <sys/resource.h>
#include <sys/socket.h>

#include "speech/account/ServiceUnderTest.h"
#include "speech/http/ReplyFile.h"
#include "speech/http/ServiceGateway.h"

namespace orlenta::speech {

namespace {

using namespace std::chrono_literals;
using test::LoopbackRequest;
using test::LoopbackServer;

const std::string keyAdvice = ". Edit the key at https://elevenlabs.io/app/settings/api-keys and switch on the five "
                              "permissions listed at https://orlenta.com/guide#connect-elevenlabs.";
const std::string busyWords =
    "ElevenLabs is busy right now\n\nThis request was rate-limited by ElevenLabs. Please wait a moment and try again. "
    "If "
    "this keeps happening, your account may be hitting concurrency limits. Check your plan at "
    "https://elevenlabs.io/app/subscription.";

struct Fault {
    const char *name;
    std::function<void(LoopbackServer &)> arrange;
    std::string words;
};

void resetConnection(const LoopbackRequest &, QTcpSocket &socket) {
    const linger lingerNot{1, 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &lingerNot, sizeof lingerNot);
    socket.abort();
}

void dripForever(const LoopbackRequest &, QTcpSocket &socket) {
    socket.write("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
    auto *drip = new QTimer(&socket);
    QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
    drip->start(10ms);
}

void writeForever(const LoopbackRequest &, QTcpSocket &socket) {
    const QByteArray chunk = "10000\r\n" + QByteArray(0x10000, ' ') + "\r\n";
    socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, chunk] {
        if (socket.bytesToWrite() < chunk.size())
            socket.write(chunk);
    });
    socket.write(chunk);
}

void writeAndClose(QTcpSocket &socket, const QByteArray &bytes) {
    socket.write(bytes);
    socket.disconnectFromHost();
}

Fault status(const char *name, int code, const QByteArray &body, const std::string &words) {
    return {name,
            [code, body](LoopbackServer &server) { server.answer("/v1/user", LoopbackServer::reply(code, body)); },
            words};
}

std::vector<Fault> faults() {
    std::vector<Fault> all{
        {"reset", [](LoopbackServer &server) { server.handle("/v1/user", resetConnection); }, "Connection closed"},
        {"stall", [](LoopbackServer &server) { server.handle("/v1/user", [](const auto &, auto &) {}); },
         "The request timed out."},
        {"slow drip", [](LoopbackServer &server) { server.handle("/v1/user", dripForever); }, "The request timed out."},
        {"truncated body",
         [](LoopbackServer &server) {
             server.handle("/v1/user", [](const LoopbackRequest &, QTcpSocket &socket) {
                 writeAndClose(socket, "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{\"user_id\":");
             });
         },
         "Connection closed"},
        {"lying length",
         [](LoopbackServer &server) {
             server.handle("/v1/user", [](const LoopbackRequest &, QTcpSocket &socket) {
                 writeAndClose(socket, "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n" + userJson(1));
             });
         },
         "The server's reply couldn't be read: unterminated string."},
        {"redirect",
         [](LoopbackServer &server) {
             server.answer("/v1/user",
                           LoopbackServer::reply(302, "", "text/html", {"Location: http://127.0.0.2:9/v1/user"}));
         },
         "HTTP error 302"},
        {"huge body", [](LoopbackServer &server) { server.handle("/v1/user", writeForever); },
         "The service sent an unexpectedly large reply."},
        {"not JSON", [](LoopbackServer &server) { server.answer("/v1/user", LoopbackServer::json("<html>")); },
         "The server's reply couldn't be read: illegal value."},
        {"a record without its key",
         [](LoopbackServer &server) { server.answer("/v1/user", LoopbackServer::json(R"({"user_id":"u"})")); },
         "The server's reply couldn't be read: \"subscription\" is missing."},
    };
    all.push_back(status("400", 400, R"({"detail":{"code":"invalid_api_key","message":"Invalid key"}})",
                         "HTTP error 400: Invalid key"));
    all.push_back(status("401, the key", 401, R"({"detail":{"status":"invalid_api_key"}})", "Invalid API key"));
    all.push_back(status("401, the quota", 401, R"({"detail":{"status":"quota_exceeded","message":"Quota used"}})",
                         "Quota used"));
    all.push_back(
        status("401, a permission", 401,
               R"({"detail":{"status":"missing_permissions","message":"is missing the permission user_read to"}})",
               "This API key is missing the user_read permission" + keyAdvice));
    all.push_back(status("403", 403, R"({"detail":{"message":"Pro only"}})", "HTTP error 403: Pro only"));
    all.push_back(status("422", 422, R"({"detail":[{"loc":["body"],"msg":"Field required"}]})", "HTTP error 422"));
    all.push_back(status("429", 429, "", busyWords));
    all.push_back(status("500", 500, R"({"detail":"boom"})", "HTTP error 500: boom"));
    return all;
}

long residentPeakKilobytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

std::string messageAfterConnecting(ServiceUnderTest &under) {
    under.connectAccount();
    EXPECT_FALSE(under.service().isAuthenticated());
    EXPECT_FALSE(under.service().isLoading());
    EXPECT_EQ(under.service().apiKey(), QStringLiteral("secret-key"));
    return under.service().errorMessage().toStdString();
}

/// A certificate that no authority has signed, made by openssl in `folder`.
QSslConfiguration selfSignedConfiguration(const QTemporaryDir &folder) {
    const QString keyPath = folder.filePath(QStringLiteral("key.pem"));
    const QString certificatePath = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-batch"),
                   QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
                   QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-keyout"), keyPath, QStringLiteral("-out"),
                   certificatePath});
    EXPECT_TRUE(openssl.waitForFinished());
    QFile keyFile(keyPath);
    QFile certificateFile(certificatePath);
    EXPECT_TRUE(keyFile.open(QIODevice::ReadOnly) && certificateFile.open(QIODevice::ReadOnly));
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPrivateKey(QSslKey(&keyFile, QSsl::Rsa));
    configuration.setLocalCertificate(QSslCertificate(&certificateFile));
    return configuration;
}

} // namespace

TEST(NetworkFaults, EachEndsInItsOwnMessageAndKeepsTheKey) {
    const long before = residentPeakKilobytes();
    for (const Fault &fault : faults()) {
        SCOPED_TRACE(fault.name);
        ServiceUnderTest under;
        under.timing.stallTimeout = std::string(fault.name) == "stall" ? 300ms : 30'000ms;
        under.timing.exchangeTimeout = std::string(fault.name) == "slow drip" ? 500ms : 60'000ms;
        fault.arrange(under.server);
        EXPECT_EQ(messageAfterConnecting(under), fault.words);
    }
    EXPECT_LT(residentPeakKilobytes() - before, 96 * 1024);
}

TEST(NetworkFaults, ARefusedConnectionSaysSo) {
    ServiceUnderTest under;
    under.service().useEndpoint(LoopbackServer().url());
    under.service().setApiKey(QStringLiteral("secret-key"));
    EXPECT_EQ(messageAfterConnecting(under), "Connection refused");
}

TEST(NetworkFaults, AnUntrustedCertificateIsRefusedBeforeTheKeyIsSent) {
    ServiceUnderTest under;
    auto sslServer = std::make_unique<QSslServer>();
    sslServer->setSslConfiguration(selfSignedConfiguration(under.folder));
    LoopbackServer server(std::move(sslServer), QStringLiteral("https"));
    under.service().useEndpoint(server.url());
    under.service().setApiKey(QStringLiteral("secret-key"));
    EXPECT_THAT(messageAfterConnecting(under), ::testing::HasSubstr("SSL handshake failed"));
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(NetworkFaults, ARedirectKeepsTheKeyAtHome) {
    ServiceUnderTest under;
    LoopbackServer stranger;
    answerAccount(stranger);
    under.server.answer("/v1/user", LoopbackServer::reply(307, "", "text/html",
                                                          {"Location: " + stranger.url().toEncoded() + "/v1/user"}));
    EXPECT_EQ(messageAfterConnecting(under), "HTTP error 307");
    EXPECT_TRUE(stranger.requests().isEmpty());

    under.server.answer("/v1/user", LoopbackServer::reply(301, "", "text/html", {"Location: /v1/moved"}));
    under.server.answer("/v1/moved", LoopbackServer::json(userJson(7)));
    under.connectAccount();
    EXPECT_EQ(under.creditsText(), QStringLiteral("7 credits"));

    under.server.answer("/v1/user", LoopbackServer::reply(301, "", "text/html", {"Location: /v1/user"}));
    EXPECT_EQ(messageAfterConnecting(under), "HTTP error 301");
}

TEST(NetworkFaults, MoreAudioThanThirteenMinutesArrivesWholeInItsFile) {
    ServiceUnderTest under;
    ServiceGateway gateway(under.timing);
    gateway.setAccess(under.server.url(), QStringLiteral("key"));
    HttpRequest request = HttpRequest::get(gateway.access(), QStringLiteral("/audio"));
    request.replyFile = std::make_shared<ReplyFile>(under.folder.filePath(QStringLiteral("reply")));
    QFile file(request.replyFile->path());

    QByteArray audio(qsizetype{70} * 1024 * 1024, '\0');
    for (qsizetype i = 0; i < audio.size(); i += 997)
        audio[i] = static_cast<char>(i);
    under.server.answer("/audio", LoopbackServer::reply(200, audio, "audio/mpeg"));
    const auto whole = resultOf(gateway.send(request));
    ASSERT_TRUE(whole) << whole.error().description().toStdString();
    EXPECT_TRUE(whole->body.isEmpty());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == audio);

    under.server.answer("/audio", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n");
    ASSERT_TRUE(resultOf(gateway.send(request)));
    EXPECT_EQ(file.size(), 3) << "a second attempt starts the file anew";
    request.replyFile.reset();
    EXPECT_FALSE(file.exists());
}

TEST(NetworkFaults, AudioThatOnlyDripsEndsWithTheTimeLimitToo) {
    ServiceUnderTest under;
    under.timing.exchangeTimeout = 500ms;
    ServiceGateway gateway(under.timing);
    gateway.setAccess(under.server.url(), QStringLiteral("key"));
    under.server.handle("/audio", dripForever);
    HttpRequest request = HttpRequest::get(gateway.access(), QStringLiteral("/audio"));
    request.replyFile = std::make_shared<ReplyFile>(under.folder.filePath(QStringLiteral("reply")));
    EXPECT_EQ(resultOf(gateway.send(request)).error().kind(), SpeechError::Kind::TimedOut);
}

TEST(NetworkFaults, AKeyThatWouldWriteHeadersIsNeverSent) {
    ServiceUnderTest under;
    under.service().setApiKey(QStringLiteral("a\r\nHost: elsewhere"));
    under.connectAccount();
    EXPECT_EQ(under.service().errorMessage(), QStringLiteral("Invalid API key"));
    EXPECT_TRUE(under.server.requests().isEmpty());
}

TEST(NetworkFaults, AServiceThatEndsMidExchangeLeavesNothingWaiting) {
    ServiceUnderTest under;
    bool reached = false;
    under.server.handle("/v1/user", [&reached](const LoopbackRequest &, QTcpSocket &) { reached = true; });
    bool ended = false;
    noteEnd(under.service().connectAccount(ElevenLabsService::KeychainErrors::Show), &ended);
    ASSERT_TRUE(ServiceUnderTest::becomes([&reached] { return reached; }));
    under.client.reset();
    EXPECT_TRUE(ended);
}

} // namespace orlenta::speech
