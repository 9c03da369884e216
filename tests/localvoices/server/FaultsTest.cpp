#include <gtest/gtest.h>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "localvoices/JsonSchema.h"
#include "localvoices/LocalVoicesProcess.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using test::LocalVoicesProcess;
using test::Reply;

TEST(Faults, AScriptIsUsedUpByTheRequestsThatItFits) {
    LocalVoicesProcess voices({u"--faults"_s, u"tts:429=2.5*2,user:401=quota_exceeded"_s});
    EXPECT_EQ(voices.get(u"/v1/voices"_s).status, 200);
    for (int i = 0; i < 2; ++i) {
        const Reply busy = voices.speak(u"local-dana"_s, u"a"_s);
        EXPECT_EQ(busy.status, 429);
        EXPECT_EQ(busy.header("Retry-After"), "2.5");
        EXPECT_EQ(test::schemaFaults(u"ApiError"_s, busy.body), QStringList());
    }
    EXPECT_EQ(voices.speak(u"local-dana"_s, u"a"_s).status, 200);
    const Reply quota = voices.get(u"/v1/user"_s);
    EXPECT_EQ(quota.status, 401);
    EXPECT_EQ(QJsonDocument::fromJson(quota.body)[u"detail"_s][u"status"_s].toString(), u"quota_exceeded"_s);
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
}

TEST(Faults, ANewScriptTakesThePlaceOfTheOld) {
    LocalVoicesProcess voices({u"--faults"_s, u"500*9"_s});
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "503=boom").status, 200);
    const Reply boom = voices.get(u"/v1/user"_s);
    EXPECT_EQ(boom.status, 503);
    EXPECT_EQ(boom.body, R"({"detail":"boom"})");
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "nonsense").status, 400);
}

TEST(Faults, ConnectionsBreakAsOrdered) {
    LocalVoicesProcess voices;
    const auto ordered = [&voices](const QByteArray &fault) {
        QNetworkRequest request = voices.request(u"/v1/user"_s);
        request.setRawHeader("x-local-fault", fault);
        return request;
    };
    EXPECT_EQ(voices.send("GET", ordered("cut")).error, QNetworkReply::RemoteHostClosedError);
    EXPECT_EQ(voices.send("GET", ordered("reset")).error, QNetworkReply::RemoteHostClosedError);
    EXPECT_EQ(voices.send("GET", ordered("huge=5000000")).body.size(), 5'000'000);
    EXPECT_EQ(voices.send("GET", ordered("empty")).body, "");
    EXPECT_TRUE(QJsonDocument::fromJson(voices.send("GET", ordered("garbage")).body).isNull());
    QNetworkRequest stalled = ordered("stall");
    stalled.setTransferTimeout(50);
    EXPECT_EQ(voices.send("GET", stalled).error, QNetworkReply::OperationCanceledError);
    QNetworkRequest slow = ordered("slow=600000");
    slow.setTransferTimeout(50);
    EXPECT_EQ(voices.send("GET", slow).error, QNetworkReply::OperationCanceledError);
    EXPECT_EQ(voices.send("GET", ordered("slow=1")).status, 200);
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
}

TEST(Faults, NoneIsTakenFromRequestsUnlessTheProgramWasToldTo) {
    LocalVoicesProcess voices{QStringList()};
    QNetworkRequest request = voices.request(u"/v1/user"_s);
    request.setRawHeader("x-local-fault", "500");
    EXPECT_EQ(voices.send("GET", request).status, 200);
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "500").status, 404);
}

} // namespace orlenta::localvoices
