#include <gtest/gtest.h>
#include <QtCore/QRandomGenerator>

#include "audio/files/AudioFileReader.h"
#include "speech/synthesis/SpeechReplies.h"

namespace orlenta::speech {
namespace {

using test::LoopbackRequest;
using test::LoopbackServer;

/// Replies as no service should send them: documented ones with damaged bodies, under heads that lie. The same seed
/// gives the same replies.
class HostileReplies final {
public:
    HostileReplies(quint32 seed, const QByteArray &elsewhere) : m_random(seed), m_elsewhere(elsewhere) {
        const QTemporaryDir folder;
        m_bodies = {userJson(1),
                    voicesJson(),
                    tonePcm().left(4000),
                    toneMp3(folder).left(6000),
                    R"({"detail":{"status":"quota_exceeded","message":"Quota used"}})",
                    R"({"detail":[{"loc":["body","text"],"msg":"Field required"}]})",
                    "<html><body>Sign in to this network</body></html>",
                    QByteArray(3000, '['),
                    R"({"user_id":")" + QByteArray(200'000, 'x') + R"(","subscription":{"tier":1e999}})",
                    "\xEF\xBB\xBF\xFF\xFE\x00\xC3\x28",
                    {}};
    }

    [[nodiscard]] QByteArray next() {
        const QByteArray body = damaged(pick(m_bodies));
        QByteArray head = "HTTP/1.1 " + pick(m_statuses) + "\r\nContent-Type: " + pick(m_types) + "\r\n";
        switch (m_random.bounded(6)) {
        case 0:
            head += "Content-Length: " + QByteArray::number(m_random.bounded(200'000)) + "\r\n";
            break;
        case 1:
            head += "Transfer-Encoding: chunked\r\n";
            break;
        case 2:
            head += "Content-Encoding: gzip\r\n";
            break;
        default:
            head += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
        }
        if (m_random.bounded(4) == 0)
            head += "Location: " + m_elsewhere + "/v1/user\r\nSet-Cookie: a=b\r\n";
        if (m_random.bounded(8) == 0)
            head += "X-Padding: " + QByteArray(m_random.bounded(20'000), 'p') + "\r\n";
        if (m_random.bounded(4) == 0)
            head += "character-cost: " + pick({"-1", "1e400", "99999999999999999999", "x"}) +
                    "\r\nRetry-After: " + pick({"-5", "1e300", "nan", "Sat, 99 Foo 0000 99:99:99 GMT"}) + "\r\n";
        const QByteArray reply = head + "Connection: close\r\n\r\n" + body;
        return m_random.bounded(10) == 0 ? reply.left(m_random.bounded(static_cast<int>(reply.size()))) : reply;
    }

private:
    [[nodiscard]] QByteArray pick(const QList<QByteArray> &from) {
        return from.at(m_random.bounded(static_cast<int>(from.size())));
    }
    [[nodiscard]] QByteArray damaged(QByteArray body) {
        for (int left = m_random.bounded(4); left > 0 && !body.isEmpty(); --left) {
            const int at = m_random.bounded(static_cast<int>(body.size()));
            if (left == 1)
                body.insert(at, body.left(m_random.bounded(64)));
            else
                body[at] = static_cast<char>(m_random.bounded(256));
        }
        return body;
    }

    QRandomGenerator m_random;
    QByteArray m_elsewhere;
    QList<QByteArray> m_bodies;
    QList<QByteArray> m_statuses{
        "200 OK",      "200 OK", "200 OK",        "204 No Content", "302 Found", "400 X", "401 Unauthorized",
        "403 Not you", "404",    "429 Slow down", "500 Oh",         "999 What",  "-1 No"};
    QList<QByteArray> m_types{"application/json", "audio/mpeg", "audio/pcm", "text/html", "", "a/b;c=\"", "\xFF"};
};

/// Every failure has a message of bearable length that keeps the key to itself.
void expectTellable(const QString &message) {
    EXPECT_FALSE(message.isEmpty());
    EXPECT_LT(message.size(), 2000);
    EXPECT_FALSE(message.contains(QStringLiteral("secret-key")));
}

TEST(HostileService, NoReplyHangsCrashesLeavesFilesOrCarriesTheKeyAway) {
    LoopbackServer elsewhere;
    HostileReplies replies(20'260'922, elsewhere.url().toEncoded());
    ServiceUnderTest under;
    under.server.handle("/", [&replies](const LoopbackRequest &, QTcpSocket &socket) {
        socket.write(replies.next());
        socket.disconnectFromHost();
    });
    const QStringList cached = cachedFiles();
    int spoken = 0;
    for (int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        under.connectAccount();
        if (!under.service().isAuthenticated())
            expectTellable(under.service().errorMessage());
        const SpeechApi::AudioResult speech = requestSpeech(under, round % 2 == 0 ? "mp3" : "wav");
        if (!speech) {
            expectTellable(speech.error().description());
            EXPECT_EQ(cachedFiles(), cached);
            continue;
        }
        ++spoken;
        auto reader = audio::AudioFileReader::open(speech->path());
        ASSERT_TRUE(reader);
        EXPECT_GT(reader->frames(), 0);
    }
    EXPECT_GT(spoken, 0) << "else this would only show that heads are refused";
    EXPECT_LT(spoken, 40);
    EXPECT_TRUE(elsewhere.requests().isEmpty());
    EXPECT_EQ(under.service().apiKey(), QStringLiteral("secret-key"));
    EXPECT_EQ(cachedFiles(), cached) << "audio that nobody keeps goes with its last holder";
}

} // namespace
} // namespace orlenta::speech
