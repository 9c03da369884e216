#include "controller/generation/LineGenerator.h"
#include "controller/generation/GenerationPlan.h"

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "base/PrivateFolders.h"
#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoManager.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/KeychainHelper.h"
#include "speech/account/ServiceAddresses.h"
#include "support/LoopbackServer.h"
#include "support/TestTone.h"

namespace orlenta::controller {
namespace {

using speech::LineGenerationQueue;
using test::LoopbackRequest;
using test::LoopbackServer;
using test::ScriptProject;

constexpr int patienceMs = 30'000;
const QByteArray dictionaryPath = "/v1/pronunciation-dictionaries/add-from-file";

speech::SpeechTiming hastyTiming() {
    speech::SpeechTiming timing;
    timing.callLater = [](std::chrono::milliseconds, const std::function<void()> &callback) {
        QTimer::singleShot(0, callback);
    };
    return timing;
}

/// A project of two lines in Ana's voice, a generator, and a service on loopback that speaks silence.
class LineGeneratorTest : public ::testing::Test {
protected:
    LineGeneratorTest() {
        defaults.setAudioFormat(QStringLiteral("wav"));
        service.useEndpoint(server.url());
        service.setApiKey(QStringLiteral("key"));
        server.answer("/v1/user", LoopbackServer::reply(401, "{}"));
        server.answer("/v1/text-to-speech/", LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm"));
        server.answer("/v1/speech-to-speech/", LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm"));
        server.answer(dictionaryPath, LoopbackServer::json(R"({"id":"d1","version_id":"v1"})"));
        project->voices().assignVoice({project.id(0), project.id(1)}, {QStringLiteral("ana"), QStringLiteral("Ana")});
    }

    void useModel(const QString &model, model::DirectionMode mode = model::DirectionMode::Text) {
        model::ProjectLineSettings settings = model::ProjectLineSettings::newLineDefaults();
        settings.model = model;
        settings.directionMode = mode;
        project->presets().updateSettings({project.id(0), project.id(1)}, settings);
    }
    void addEntry(const QString &spelling, const QString &alias) {
        model::PronunciationEntry entry;
        entry.id = model::PronunciationId::create();
        entry.spelling = spelling;
        entry.phoneticOverride = alias;
        project->pronunciations().addPronunciationEntry(entry);
    }
    void generate(qsizetype index) { QCoro::waitFor(generator.generate(project.id(index))); }
    [[nodiscard]] QJsonObject spoken() const {
        const auto requests = server.requests("/v1/text-to-speech/");
        return requests.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(requests.last().body).object();
    }
    [[nodiscard]] bool isGenerating(const model::LineId &id) const { return project->runtime().state(id).isGenerating; }
    [[nodiscard]] qsizetype takeCount(qsizetype index) const { return project.line(index).takes.size(); }

    QTemporaryDir directory;
    base::UserDefaults defaults{directory.filePath(QStringLiteral("defaults.ini"))};
    speech::KeychainHelper credentials;
    LoopbackServer server;
    speech::ElevenLabsService service{defaults, credentials, nullptr, hastyTiming()};
    ScriptProject project{{{QStringLiteral("Hi [sighs] gif"), QStringLiteral("[whispers] Hello gif")}},
                          ScriptProject::Folder::OnDisk};
    LineGenerator generator{*project, service};
};

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

TEST_F(LineGeneratorTest, ALineDeletedWhileItWaitsIsNeitherSpokenNorMissed) {
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

TEST_F(LineGeneratorTest, TheSelectionIsGeneratedWhereAudioIsMissingAndElseAgain) {
    const auto planned = [this] { return planForSelection(*project); };
    project->selection().selectAll();
    project.addTake(0);
    EXPECT_EQ(planned().lines, QList{project.id(1)});
    EXPECT_EQ(planned().kind, GenerationKind::Generate);
    generator.generateSelectedLines();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !generator.queue().isActive(); }, patienceMs));
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
    ASSERT_TRUE(QTest::qWaitFor([this] { return !generator.queue().isActive(); }, patienceMs));
    EXPECT_EQ(takeCount(0), 2);
}

TEST_F(LineGeneratorTest, AGeneratorThatGoesWhileItsRequestRunsLeavesNothingBehind) {
    auto leaving = std::make_unique<LineGenerator>(*project, service);
    bool arrived = false;
    server.handle("/v1/text-to-speech/", [&](const LoopbackRequest &, QTcpSocket &socket) {
        leaving.reset();
        socket.write(LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm"));
        socket.disconnectFromHost();
        arrived = true;
    });
    leaving->enqueue({project.id(0), project.id(1)}, LineGenerationQueue::Priority::Normal);
    ASSERT_TRUE(QTest::qWaitFor([&] { return arrived; }, patienceMs));
    generate(1);
    EXPECT_EQ(takeCount(0), 0);
    EXPECT_EQ(takeCount(1), 1);
}

} // namespace orlenta::controller
