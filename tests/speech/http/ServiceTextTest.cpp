#include "speech/http/ServiceText.h"

#include <gtest/gtest.h>

#include "speech/synthesis/SpeechReplies.h"

namespace orlenta::speech {

TEST(ServiceText, MegabytesOfWordsAreCutWhereTheyEnter) {
    const QByteArray words(2 * 1024 * 1024, 'x');
    ServiceUnderTest under;
    under.server.answer("/v1/user", test::LoopbackServer::json(
                                        R"({"user_id":"u1","first_name":")" + words + R"(","subscription":{"tier":")" +
                                        words + R"(","character_count":1,"character_limit":2,"status":"active"}})"));
    under.server.answer("/v1/voices", test::LoopbackServer::json(R"({"voices":[{"voice_id":"v1","name":")" + words +
                                                                 R"(","description":")" + words +
                                                                 R"(","labels":{"accent":")" + words + R"("}}]})"));
    under.connectAccount();
    const ElevenLabsService &service = under.service();
    ASSERT_TRUE(service.isAuthenticated()) << service.errorMessage().toStdString();
    const qsizetype longest = longestServiceDescription + 1;
    const Voice &voice = service.voices().first();
    for (const QString &text : {voice.name, *voice.description, voice.labels->value(QStringLiteral("accent")),
                                *service.user()->firstName, service.user()->subscription.tier}) {
        EXPECT_LE(text.size(), longest);
        EXPECT_TRUE(text.endsWith(QStringLiteral("x\u2026")));
    }
    for (const int status : {401, 500}) {
        under.server.answer("/v1/user",
                            test::LoopbackServer::reply(status, R"({"detail":{"status":"quota_exceeded","message":")" +
                                                                    words + R"("}})"));
        under.connectAccount();
        EXPECT_LE(under.service().errorMessage().size(), longest);
    }
}

} // namespace orlenta::speech
