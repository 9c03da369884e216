#include "localvoices/http/HttpConnection.h"

#include <gtest/gtest.h>
#include <QtCore/QUrl>

#include "localvoices/VoicesProgram.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using test::Reply;
using test::VoicesProgram;

namespace {

constexpr int patienceMilliseconds = 30'000;

/// A client that sends arbitrary bytes, unlike an HTTP library.
class RawClient final {
public:
    explicit RawClient(const VoicesProgram &voices) {
        m_socket.connectToHost(u"127.0.0.1"_s, static_cast<quint16>(QUrl(voices.address()).port()));
        EXPECT_TRUE(m_socket.waitForConnected(patienceMilliseconds));
    }

    RawClient &write(const QByteArray &bytes) {
        m_socket.write(bytes);
        while (m_socket.bytesToWrite() > 0 && m_socket.waitForBytesWritten(patienceMilliseconds)) {
        }
        return *this;
    }

    /// Reads the head of the next answer and returns its status; 0 if there is none.
    int status() {
        QByteArray head;
        while (!head.endsWith("\r\n\r\n")) {
            if (m_socket.bytesAvailable() == 0 && !m_socket.waitForReadyRead(patienceMilliseconds))
                return 0;
            head += m_socket.readLine();
        }
        return head.split(' ').value(1).toInt();
    }

    bool isCutOff() {
        return m_socket.state() == QAbstractSocket::UnconnectedState ||
               m_socket.waitForDisconnected(patienceMilliseconds);
    }

private:
    QTcpSocket m_socket;
};

int statusOf(const VoicesProgram &voices, const QByteArray &request) {
    return RawClient(voices).write(request).status();
}

const QByteArray keyHeader = QByteArray("xi-api-key: ") + VoicesProgram::key + "\r\n";

QByteArray headOf(const QByteArray &requestLine, const QByteArray &headers) {
    return requestLine + " HTTP/1.1\r\n" + headers + "\r\n";
}

} // namespace

TEST(HttpConnection, RefusesByTheHeadAloneWithoutWaitingForTheBody) {
    const VoicesProgram voices;
    struct Case {
        QByteArray requestLine;
        QByteArray headers;
        int status;
    };
    const QByteArray speak = "POST /v1/text-to-speech/local-dana";
    const QByteArray convert = "POST /v1/speech-to-speech/local-dana";
    const QByteArray upload = "POST /v1/pronunciation-dictionaries/add-from-file";
    for (const Case &each : {
             Case{speak, "Content-Length: 600000000\r\n", 401},
             Case{speak, "xi-api-key: wrong\r\nContent-Length: 600000000\r\n", 401},
             Case{speak, keyHeader + "Content-Length: 1100000\r\n", 413},
             Case{convert, keyHeader + "Content-Length: 60000000\r\n", 413},
             Case{upload, keyHeader + "Content-Length: 4200000\r\n", 413},
             Case{"POST /local/faults", keyHeader + "Content-Length: 70000\r\n", 413},
             Case{"GET /v1/user", keyHeader + "Content-Length: 1\r\n", 413},
             Case{"POST /v1/nothing", keyHeader + "Content-Length: 600000000\r\n", 404},
             Case{speak, keyHeader + "Transfer-Encoding: chunked\r\n", 411},
         })
        EXPECT_EQ(statusOf(voices, headOf(each.requestLine, each.headers)), each.status)
            << each.requestLine.constData() << ' ' << each.headers.constData();
}

TEST(HttpConnection, RefusesWhatIsNotARequest) {
    const VoicesProgram voices;
    const QByteArray user = "GET /v1/user";
    for (const QByteArray &request : {
             QByteArray("\r\n\r\n"),
             QByteArray("nonsense\r\n\r\n"),
             QByteArray("GET /v1/user HTTP/2\r\n\r\n"),
             headOf("GET http://127.0.0.1/v1/user", keyHeader),
             headOf("GET //v1/user", keyHeader),
             headOf("GET v1/user", keyHeader),
             headOf("G(T /v1/user", keyHeader),
             headOf(user, keyHeader + "no colon\r\n"),
             headOf(user, keyHeader + " folded: header\r\n"),
             headOf(user, keyHeader + "Content-Length: -1\r\n"),
             headOf(user, keyHeader + "Content-Length: 1e3\r\n"),
             headOf(user, keyHeader + "Content-Length: 99999999999999999999\r\n"),
             headOf(user, keyHeader + "Content-Length: 0\r\nContent-Length: 5\r\n"),
         })
        EXPECT_EQ(statusOf(voices, request), 400) << request.constData();
    EXPECT_EQ(statusOf(voices, "GET /v1/user HTTP/1.1\r\nx: " + QByteArray(20'000, 'x')), 431);
    EXPECT_EQ(statusOf(voices, headOf(user, keyHeader)), 200);
}

TEST(HttpConnection, TakesARequestInPieces) {
    const VoicesProgram voices;
    const QByteArray body = R"({"text":"a"})";
    const QByteArray head =
        headOf("POST /v1/text-to-speech/local-dana?output_format=pcm_16000",
               keyHeader + "Expect: 100-continue\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n");
    RawClient client(voices);
    client.write(head.left(30));
    client.write(head.mid(30));
    EXPECT_EQ(client.status(), 100);
    client.write(body.left(4));
    client.write(body.mid(4));
    EXPECT_EQ(client.status(), 200);
}

TEST(HttpConnection, AClientThatIsStillSendingReadsItsRefusal) {
    VoicesProgram voices;
    QNetworkRequest request = voices.request(u"/v1/speech-to-speech/local-dana"_s);
    request.setRawHeader("Content-Type", "application/octet-stream");
    request.setRawHeader("xi-api-key", "wrong");
    const Reply reply = voices.send("POST", request, QByteArray(20'000'000, 'x'));
    EXPECT_EQ(reply.status, 401);
    EXPECT_TRUE(reply.body.contains("invalid_api_key"));
}

TEST(HttpConnection, ClientsThatSayNothingMakeRoomForTheOthers) {
    VoicesProgram voices;
    std::vector<std::unique_ptr<RawClient>> silent;
    for (int i = 0; i < 200; ++i)
        silent.push_back(std::make_unique<RawClient>(voices));
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
    EXPECT_TRUE(silent.front()->isCutOff());
}

} // namespace orlenta::localvoices
