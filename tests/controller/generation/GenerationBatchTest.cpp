#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "controller/generation/GenerationTest.h"
#include "controller/script/Selection.h"

namespace orlenta::controller {
namespace {

using speech::LineGenerationQueue;
using test::LoopbackServer;

QStringList manyLines() {
    QStringList lines;
    for (int i = 1; i <= 12; ++i)
        lines.append(QStringLiteral("Line %1").arg(i));
    return lines;
}

class GenerationBatchTest : public test::GenerationTest {
protected:
    GenerationBatchTest() : GenerationTest(manyLines()) {}
};

const QString skippedForAccount =
    QStringLiteral("%1 lines weren't generated: you signed out or switched accounts first.");

} // namespace

TEST_F(GenerationBatchTest, ASignOutEndsTheWaitingLinesWithoutARequestAndWithOneMessage) {
    const QSignalSpy errors(&generator, &LineGenerator::generateErrorChanged);
    duringLine(3, [this] { service.disconnectAccount(); });
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(requestCount(), 3);
    EXPECT_EQ(takeCount(), 3) << "what the service was speaking is paid for, and installed";
    EXPECT_EQ(errors.count(), 1);
    EXPECT_EQ(generator.generateErrorTitle(), QStringLiteral("Generation Stopped"));
    EXPECT_EQ(generator.generateError(), skippedForAccount.arg(9));
    for (const model::LineId &id : lineIds())
        EXPECT_FALSE(isGenerating(id));
}

TEST_F(GenerationBatchTest, ANewAccountDoesntPayForEarlierRequests) {
    LoopbackServer other;
    other.answer("/v1/text-to-speech/", test::silenceReply());
    duringLine(1, [&] {
        service.useEndpoint(other.url());
        service.setApiKey(QStringLiteral("other"));
    });
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(takeCount(), 1);
    EXPECT_TRUE(other.requests().isEmpty());
    EXPECT_EQ(generator.generateError(), skippedForAccount.arg(11));
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(other.requests("/v1/text-to-speech/").size(), 12) << "what is asked for now runs on the new account";
}

TEST_F(GenerationBatchTest, ASignOutDuringARetryEndsTheLineBeforeTheNextAttempt) {
    const auto attempts = std::make_shared<int>(0);
    server.handle("/v1/text-to-speech/", [=, this](const test::LoopbackRequest &, QTcpSocket &socket) {
        ++*attempts;
        service.setApiKey(QStringLiteral("other"));
        socket.write(LoopbackServer::reply(429, "{}"));
        socket.disconnectFromHost();
    });
    generate(0);
    EXPECT_EQ(*attempts, 1);
    EXPECT_EQ(generator.generateError(),
              QStringLiteral("1 line wasn't generated: you signed out or switched accounts first."));
}

TEST_F(GenerationBatchTest, WithoutAKeyNothingIsQueuedAndTheMessageSaysWhatToDo) {
    service.setApiKey({});
    const QSignalSpy errors(&generator, &LineGenerator::generateErrorChanged);
    enqueueBatch();
    EXPECT_FALSE(generator.queue().isActive());
    EXPECT_EQ(errors.count(), 1);
    EXPECT_EQ(generator.generateError(), speech::SpeechError::notConnected().description());
    generate(0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(GenerationBatchTest, PressingAgainDuringABatchPaysForNoLineTwice) {
    const auto press = [this] { generator.generateSelectedLines(); };
    project->selection().selectAll();
    press();
    press();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(takeCount(), 12);

    // All lines have audio now, so each press requests all of them again.
    const auto count = std::make_shared<int>(0);
    server.handle("/v1/text-to-speech/", [=](const test::LoopbackRequest &, QTcpSocket &socket) {
        if (++*count == 4 || *count == 9)
            press();
        socket.write(test::silenceReply());
        socket.disconnectFromHost();
    });
    press();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(takeCount(), 24);
}

TEST_F(GenerationBatchTest, FinishedLinesCanBeSelectedAndRegenerated) {
    project->selection().selectAll();
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    duringLine(6, [this] {
        project->selection().selectAlone(project.id(0));
        project->selection().toggle(project.id(1));
        generator.generateSelectedLines();
        generator.generateSelectedLines();
    });
    generator.generateSelectedLines();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(takeCount(0), 3);
    EXPECT_EQ(takeCount(1), 3);
    EXPECT_EQ(takeCount(), 26);
}

TEST_F(GenerationBatchTest, AStopKeepsTheRunningLineAndLeavesTheOthersAsTheyWere) {
    duringLine(2, [this] { generator.queue().stop(); });
    enqueueBatch();
    ASSERT_TRUE(queueEnds());
    EXPECT_EQ(requestCount(), 2);
    EXPECT_EQ(takeCount(), 2);
    EXPECT_EQ(generator.generateError(), std::nullopt);
}

} // namespace orlenta::controller
