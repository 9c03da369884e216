#include "controller/generation/LineGenerator.h"
#include "controller/generation/GenerationPlan.h"

#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "controller/document/UndoManager.h"
#include "controller/generation/GenerationTest.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/MediaFiles.h"
#include "speech/account/ServiceAddresses.h"
#include "support/TestTone.h"

namespace orlenta::controller {
namespace {

using speech::LineGenerationQueue;
using test::dictionaryPath;
using test::LoopbackRequest;
using test::LoopbackServer;
using test::ScriptProject;

class LineGeneratorTest : public test::GenerationTest {};

} // namespace

TEST_F(LineGeneratorTest, AModelWithoutTagsGetsPlainTextAndThePreviousLine) {
    useModel(QStringLiteral("v2"));
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    generate(1);
    EXPECT_EQ(spoken()[QStringLiteral("text")], QStringLiteral("Hello jif"));
    EXPECT_EQ(spoken()[QStringLiteral("previous_text")], QStringLiteral("Hi jif"));
    EXPECT_EQ(spoken()[QStringLiteral("model_id")], QStringLiteral("eleven_multilingual_v2"));
    EXPECT_TRUE(spoken()[QStringLiteral("voice_settings")].toObject().contains(QStringLiteral("speed")));
    EXPECT_TRUE(server.requests(dictionaryPath).isEmpty());
    ASSERT_EQ(takeCount(1), 1);
    EXPECT_EQ(project.line(1).takes.first().characterCount, 20);
    EXPECT_TRUE(QFile::exists(project->media().audioURL(project.line(1)).toLocalFile()));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Generate"));
    EXPECT_FALSE(isGenerating(project.id(1)));
    generate(0);
    EXPECT_FALSE(spoken().contains(QStringLiteral("previous_text")));
}

TEST_F(LineGeneratorTest, TheExpressiveModelGetsTagsAndADictionaryThatIsUploadedOnce) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    generate(1);
    generate(1);
    EXPECT_EQ(spoken()[QStringLiteral("text")], QStringLiteral("[whispers] Hello gif"));
    EXPECT_FALSE(spoken().contains(QStringLiteral("previous_text")));
    const QJsonArray locators = spoken()[QStringLiteral("pronunciation_dictionary_locators")].toArray();
    ASSERT_EQ(locators.size(), 1);
    EXPECT_EQ(locators.first()[QStringLiteral("pronunciation_dictionary_id")], QStringLiteral("d1"));
    ASSERT_EQ(server.requests(dictionaryPath).size(), 1);
    EXPECT_TRUE(server.requests(dictionaryPath).first().body.contains("<grapheme>gif</grapheme>"));
    EXPECT_EQ(takeCount(1), 2);
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Regenerate"));
    project->undoManager().undo();
    project->undoManager().undo();
    project->undoManager().undo();
    generate(1);
    EXPECT_EQ(server.requests(dictionaryPath).size(), 1);
    EXPECT_FALSE(spoken().contains(QStringLiteral("pronunciation_dictionary_locators")));
}

TEST_F(LineGeneratorTest, AFailedUploadFallsBackToReplacementForThisOnce) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    server.answerInTurn(dictionaryPath,
                        {LoopbackServer::reply(500, "{}"), LoopbackServer::json(R"({"id":"d2","version_id":"v2"})")});
    generate(1);
    EXPECT_EQ(spoken()[QStringLiteral("text")], QStringLiteral("[whispers] Hello jif"));
    EXPECT_FALSE(spoken().contains(QStringLiteral("pronunciation_dictionary_locators")));
    EXPECT_TRUE(project->pronunciations().pronunciationDirty());
    EXPECT_EQ(generator.generateError(), std::nullopt);
    generate(1);
    EXPECT_EQ(spoken()[QStringLiteral("text")], QStringLiteral("[whispers] Hello gif"));
    EXPECT_FALSE(project->pronunciations().pronunciationDirty());
}

TEST_F(LineGeneratorTest, AnEntryChangedDuringTheUploadIsUploadedNextTime) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    server.handle(dictionaryPath, [this](const LoopbackRequest &, QTcpSocket &socket) {
        if (project->pronunciations().entries().size() == 1)
            addEntry(QStringLiteral("Ana"), QStringLiteral("Ahna"));
        socket.write(LoopbackServer::json(R"({"id":"d1","version_id":"v1"})"));
        socket.disconnectFromHost();
    });
    generate(1);
    EXPECT_TRUE(project->pronunciations().pronunciationDirty());
    generate(1);
    EXPECT_FALSE(project->pronunciations().pronunciationDirty());
    EXPECT_EQ(server.requests(dictionaryPath).size(), 2);
}

TEST_F(LineGeneratorTest, ALineDeletedWhileItWaitsIsSkippedSilently) {
    addEntry(QStringLiteral("gif"), QStringLiteral("jif"));
    const model::LineId id = project.id(1);
    const auto deleting = [this, id](const QByteArray &reply) {
        return [this, id, reply](const LoopbackRequest &, QTcpSocket &socket) {
            project->lines().deleteLine(id);
            socket.write(reply);
            socket.disconnectFromHost();
        };
    };
    server.handle(dictionaryPath, deleting(LoopbackServer::json(R"({"id":"d1","version_id":"v1"})")));
    generate(1);
    EXPECT_TRUE(server.requests("/v1/text-to-speech/").isEmpty());
    EXPECT_FALSE(isGenerating(id));
    project->undoManager().undo();
    EXPECT_FALSE(isGenerating(id));

    server.handle("/v1/text-to-speech/", deleting(LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm")));
    generate(1);
    EXPECT_EQ(server.requests("/v1/text-to-speech/").size(), 1);
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Delete Line"));
    EXPECT_EQ(generator.generateError(), std::nullopt);
    EXPECT_FALSE(isGenerating(id));
}

TEST_F(LineGeneratorTest, FailuresAreWordedAndDismissed) {
    const QSignalSpy changed(&generator, &LineGenerator::generateErrorChanged);
    server.answer("/v1/text-to-speech/", LoopbackServer::reply(503, "{}"));
    generate(0);
    EXPECT_EQ(generator.generateErrorTitle(), QStringLiteral("Generation Failed"));
    EXPECT_EQ(generator.generateError(), speech::ElevenLabsError::httpError(503, QString()).description());
    server.answer("/v1/text-to-speech/", LoopbackServer::reply(429, "{}"));
    generate(0);
    EXPECT_EQ(generator.generateErrorTitle(), QStringLiteral("ElevenLabs is busy right now"));
    EXPECT_TRUE(
        generator.generateError()->endsWith(QStringLiteral("Check your plan at %1.").arg(speech::planAddress())));
    EXPECT_EQ(takeCount(0), 0);
    EXPECT_FALSE(isGenerating(project.id(0)));
    generator.dismissError();
    EXPECT_EQ(generator.generateErrorTitle(), QStringLiteral("Generation Failed"));
    EXPECT_EQ(generator.generateError(), std::nullopt);
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(LineGeneratorTest, DirectionAudioIsSpokenInTheVoiceAndItsAbsenceFallsBackToText) {
    useModel(QStringLiteral("v3"), model::DirectionMode::Voice);
    generate(0);
    EXPECT_EQ(server.requests("/v1/text-to-speech/ana").size(), 1);

    model::Project records = project->project();
    records.lines.update(project.id(0), [](model::ProjectLine &line) {
        line.sourceRecordings = {{model::RecordingId::create(), QStringLiteral("d.wav"), {}, 0.1}};
        line.activeSourceId = line.sourceRecordings.first().id;
    });
    ScriptProject directed(records, ScriptProject::Folder::OnDisk);
    testing::writeTone(directed.folder() + QStringLiteral("/Audio Files/Recordings/d.wav"), 0.05);
    ASSERT_TRUE(directed->save());
    directed.reopen();
    LineGenerator directedGenerator(*directed, service);
    QCoro::waitFor(directedGenerator.generate(directed.id(0)));
    ASSERT_EQ(server.requests("/v1/speech-to-speech/ana").size(), 1);
    EXPECT_EQ(server.requests("/v1/text-to-speech/").size(), 1);
    EXPECT_EQ(directed.line(0).takes.last().characterCount, 14);
}

TEST_F(LineGeneratorTest, ALineWithoutAVoiceOrAlreadyOnItsWayStopsQuietly) {
    ScriptProject voiceless({{QStringLiteral("a")}});
    LineGenerator other(*voiceless, service);
    EXPECT_FALSE(canGenerate(*voiceless, voiceless.id(0)));
    QCoro::waitFor(other.generate(voiceless.id(0)));
    QCoro::waitFor(other.generate(model::LineId::create()));
    EXPECT_TRUE(canGenerate(*project, project.id(0)));
    project->takes().setGenerating(GenerationState::Generating, project.id(0));
    generate(0);
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_EQ(other.generateError(), std::nullopt);
    EXPECT_TRUE(isGenerating(project.id(0)));
}

TEST_F(LineGeneratorTest, TheSelectionGeneratesLinesWithoutAudioOtherwiseAllAgain) {
    const auto planned = [this] { return planForSelection(*project); };
    project->selection().selectAll();
    project.addTake(0);
    EXPECT_EQ(planned().lines, QList{project.id(1)});
    EXPECT_EQ(planned().kind, GenerationKind::Generate);
    generator.generateSelectedLines();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !generator.queue().isActive(); }, test::patienceMs));
    EXPECT_EQ(takeCount(0), 1);
    EXPECT_EQ(takeCount(1), 1);
    EXPECT_EQ(planned().lines, (QList{project.id(0), project.id(1)}));
    EXPECT_EQ(planned().kind, GenerationKind::Regenerate);
    project.clearSelection();
    generator.generateSelectedLines();
    EXPECT_FALSE(generator.queue().isActive());
    project->selection().selectAlone(project.id(0));
    generator.generateSelectedLines();
    generator.generateSelectedLines();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !generator.queue().isActive(); }, test::patienceMs));
    EXPECT_EQ(takeCount(0), 2);
}

TEST_F(LineGeneratorTest, AGeneratorDestroyedDuringARequestLeavesNothingBehind) {
    auto leaving = std::make_unique<LineGenerator>(*project, service);
    bool arrived = false;
    server.handle("/v1/text-to-speech/", [&](const LoopbackRequest &, QTcpSocket &socket) {
        leaving.reset();
        socket.write(LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm"));
        socket.disconnectFromHost();
        arrived = true;
    });
    leaving->enqueue({project.id(0), project.id(1)}, LineGenerationQueue::Priority::Normal);
    ASSERT_TRUE(QTest::qWaitFor([&] { return arrived; }, test::patienceMs));
    generate(1);
    EXPECT_EQ(takeCount(0), 0);
    EXPECT_EQ(takeCount(1), 1);
}

} // namespace orlenta::controller
