#include <gtest/gtest.h>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "localvoices/JsonSchema.h"
#include "localvoices/VoicesProgram.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using test::Reply;
using test::VoicesProgram;

TEST(Faults, AScriptIsUsedUpByTheRequestsThatItFits) {
    VoicesProgram voices({u"--faults"_s, u"tts:429=2.5*2,user:401=quota_exceeded"_s});
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
    VoicesProgram voices({u"--faults"_s, u"500*9"_s});
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "503=boom").status, 200);
    const Reply boom = voices.get(u"/v1/user"_s);
    EXPECT_EQ(boom.status, 503);
    EXPECT_EQ(boom.body, R"({"detail":"boom"})");
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "nonsense").status, 400);
}

TEST(Faults, ConnectionsBreakAsOrdered) {
    VoicesProgram voices;
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

TEST(Faults, APortalAnswersALineWithItsPage) {
    VoicesProgram voices({u"--faults"_s, u"tts:portal"_s});
    const Reply page = voices.speak(u"local-dana"_s, u"a"_s);
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.contentType, "text/html; charset=utf-8");
    EXPECT_TRUE(page.body.startsWith("<!DOCTYPE html>"));
    EXPECT_EQ(voices.speak(u"local-dana"_s, u"a"_s).contentType, "audio/pcm");
}

TEST(Faults, StabilityIsCheckedForTheModelsThatKnowThreeSteps) {
    VoicesProgram voices({u"--faults"_s, u"tts:stability*6"_s});
    const auto speak = [&voices](const QString &model, double stability) {
        return voices.speak(u"local-dana"_s, u"a"_s,
                            u",\"model_id\":\"%1\",\"voice_settings\":{\"stability\":%2}"_s.arg(model).arg(stability));
    };
    const Reply refused = speak(u"eleven_v3"_s, 0.3);
    EXPECT_EQ(refused.status, 400);
    EXPECT_EQ(test::schemaFaults(u"ApiError"_s, refused.body), QStringList());
    const QJsonValue detail = QJsonDocument::fromJson(refused.body)[u"detail"_s];
    EXPECT_EQ(detail[u"status"_s].toString(), u"invalid_ttd_stability"_s);
    EXPECT_EQ(detail[u"message"_s].toString(), u"Invalid TTD stability value. Must be one of: [0.0, 0.5, 1.0] "
                                               u"(0.0 = Creative, 0.5 = Natural, 1.0 = Robust)"_s);
    for (const double step : {0.0, 0.5, 1.0})
        EXPECT_EQ(speak(u"eleven_v3"_s, step).status, 200) << step;
    EXPECT_EQ(speak(u"eleven_multilingual_v2"_s, 0.3).status, 200);
    EXPECT_EQ(voices.speak(u"local-dana"_s, u"a"_s, u",\"model_id\":\"eleven_v3\""_s).status, 200)
        << "the default is one of the three";
    EXPECT_EQ(speak(u"eleven_v3"_s, 0.3).status, 200) << "the fault is used up";
}

TEST(Faults, NoneIsTakenFromRequestsUnlessTheProgramWasToldTo) {
    VoicesProgram voices{QStringList()};
    QNetworkRequest request = voices.request(u"/v1/user"_s);
    request.setRawHeader("x-local-fault", "500");
    EXPECT_EQ(voices.send("GET", request).status, 200);
    EXPECT_EQ(voices.post(u"/local/faults"_s, "text/plain", "500").status, 404);
}

} // namespace orlenta::localvoices
