#include <gtest/gtest.h>

#include "controller/document/TypingSession.h"
#include "controller/generation/GenerationTest.h"
#include "controller/script/LineEditing.h"

namespace orlenta::controller {
namespace {

using test::dictionaryPath;
using test::LoopbackRequest;
using test::LoopbackServer;

class LineSpeakerTest : public test::GenerationTest {
protected:
    [[nodiscard]] QString usedDictionary() const {
        const QJsonArray locators = spoken()[QStringLiteral("pronunciation_dictionary_locators")].toArray();
        return locators.isEmpty() ? QString()
                                  : locators.first()[QStringLiteral("pronunciation_dictionary_id")].toString();
    }
};

QByteArray dictionaryRefusal() {
    return LoopbackServer::reply(404, R"({"detail":{"code":"pronunciation_dictionary_not_found",)"
                                      R"("message":"A pronunciation dictionary with the ID d1 was not found."}})");
}

} // namespace

TEST_F(LineSpeakerTest, ADictionaryBelongsToOneEndpointAndAccount) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    generate(0);
    EXPECT_EQ(usedDictionary(), QStringLiteral("d1"));
    server.answer(dictionaryPath, LoopbackServer::json(R"({"id":"d2","version_id":"v2"})"));
    service.setApiKey(QStringLiteral("other"));
    generate(0);
    EXPECT_EQ(usedDictionary(), QStringLiteral("d2"));
    generate(1);
    EXPECT_EQ(server.requests(dictionaryPath).size(), 2);
}

TEST_F(LineSpeakerTest, ADictionaryMissingAtTheServiceIsUploadedAgainOnce) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    generate(0);
    server.answer(dictionaryPath, LoopbackServer::json(R"({"id":"d2","version_id":"v2"})"));
    server.answerInTurn("/v1/text-to-speech/", {dictionaryRefusal(), test::silenceReply()});
    generate(0);
    EXPECT_EQ(takeCount(0), 2);
    EXPECT_EQ(usedDictionary(), QStringLiteral("d2"));

    server.answer("/v1/text-to-speech/", dictionaryRefusal());
    const qsizetype before = requestCount();
    generate(0);
    EXPECT_EQ(requestCount() - before, 2);
    EXPECT_TRUE(generator.generateError()->startsWith(QStringLiteral("HTTP error 404: ")));

    server.answer("/v1/text-to-speech/", LoopbackServer::reply(404, R"({"detail":{"code":"voice_not_found"}})"));
    const qsizetype uploads = server.requests(dictionaryPath).size();
    generate(0);
    EXPECT_EQ(server.requests(dictionaryPath).size(), uploads) << "another 404 is no matter of the dictionary's";
}

TEST_F(LineSpeakerTest, ALineWithNothingToSayEndsBeforeAnyRequest) {
    project->lines().addLine();
    project->lines().addLine();
    project->voices().assignVoice(lineIds(), {QStringLiteral("ana"), QStringLiteral("Ana")});
    const auto write = [this](qsizetype index, const char *text) {
        project->typing().type(project.id(index), QString::fromUtf8(text));
    };
    write(2, " \n ");
    write(3, "[laughs]");
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(requestCount(), 2);
    EXPECT_EQ(takeCount(2) + takeCount(3), 0);
    generate(2);
    EXPECT_EQ(takeCount(2), 0);
    generate(3);
    EXPECT_EQ(takeCount(3), 1) << "a model that understands tags may laugh when it is asked to";
    useModel(QStringLiteral("v2"));
    generate(3);
    EXPECT_EQ(takeCount(3), 1);
    EXPECT_EQ(generator.generateError(), std::nullopt);
}

TEST_F(LineSpeakerTest, ALinePastItsModelsLimitIsRefusedWithBothNumbers) {
    project->typing().type(project.id(0), QStringLiteral("a").repeated(5001));
    generate(0);
    EXPECT_EQ(requestCount(), 0);
    EXPECT_EQ(generator.generateError(), QStringLiteral("The line has 5001 characters, but its model takes 5000 at "
                                                        "most. Shorten or split the line."));
    useModel(QStringLiteral("v2"));
    generate(0);
    EXPECT_EQ(takeCount(0), 1);
}

} // namespace orlenta::controller
