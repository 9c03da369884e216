#pragma once

#include <functional>

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include "base/files/PrivateFolders.h"
#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/generation/LineGenerator.h"
#include "controller/generation/Pronunciations.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/TakeEditing.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/KeychainHelper.h"
#include "support/LoopbackServer.h"

namespace orlenta::test {

inline constexpr int patienceMs = 30'000;
inline const QByteArray dictionaryPath = "/v1/pronunciation-dictionaries/add-from-file";

/// Waits that take no time.
[[nodiscard]] inline speech::SpeechTiming hastyTiming() {
    speech::SpeechTiming timing;
    timing.callLater = [](std::chrono::milliseconds, const std::function<void()> &callback) {
        QTimer::singleShot(0, callback);
    };
    return timing;
}

/// A tenth of a second of silence, as raw samples.
[[nodiscard]] inline QByteArray silenceReply() {
    return LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm");
}

/// A project in Ana's voice, with two lines by default, a generator, and a loopback service that speaks silence.
class GenerationTest : public ::testing::Test {
protected:
    explicit GenerationTest(const QStringList &lines = {QStringLiteral("Hi [sighs] gif"),
                                                        QStringLiteral("[whispers] Hello gif")})
        : project({lines}, ScriptProject::Folder::OnDisk) {
        defaults.setAudioFormat(QStringLiteral("wav"));
        service.useEndpoint(server.url());
        service.setApiKey(QStringLiteral("key"));
        server.answer("/v1/user", LoopbackServer::reply(401, "{}"));
        server.answer("/v1/text-to-speech/", silenceReply());
        server.answer("/v1/speech-to-speech/", silenceReply());
        server.answer(dictionaryPath, LoopbackServer::json(R"({"id":"d1","version_id":"v1"})"));
        project->voices().assignVoice(lineIds(), {QStringLiteral("ana"), QStringLiteral("Ana")});
    }

    [[nodiscard]] QList<model::LineId> lineIds() const {
        QList<model::LineId> ids;
        for (qsizetype i = 0; i < project->scriptLineIds().size(); ++i)
            ids.append(project.id(i));
        return ids;
    }

    void useModel(const QString &model, model::DirectionMode mode = model::DirectionMode::Text) {
        model::ProjectLineSettings settings = model::ProjectLineSettings::newLineDefaults();
        settings.model = model;
        settings.directionMode = mode;
        project->presets().updateSettings(lineIds(), settings);
    }
    void addEntry(const QString &spelling, const QString &alias) {
        model::PronunciationEntry entry;
        entry.id = model::PronunciationId::create();
        entry.spelling = spelling;
        entry.phoneticOverride = alias;
        project->pronunciations().addPronunciationEntry(entry);
    }
    void generate(qsizetype index) { QCoro::waitFor(generator.generate(project.id(index))); }
    void enqueueBatch() { generator.enqueue(lineIds(), speech::LineGenerationQueue::Priority::Normal); }
    [[nodiscard]] bool queueEnds() {
        return QTest::qWaitFor([this] { return !generator.queue().isActive(); }, patienceMs);
    }
    /// Calls `happen` when request `number`, counted from 1, reaches the service, before it answers.
    void duringLine(int number, const std::function<void()> &happen) {
        const auto count = std::make_shared<int>(0);
        server.handle("/v1/text-to-speech/", [=](const LoopbackRequest &, QTcpSocket &socket) {
            if (++*count == number)
                happen();
            socket.write(silenceReply());
            socket.disconnectFromHost();
        });
    }
    [[nodiscard]] QJsonObject spoken() const {
        const auto requests = server.requests("/v1/text-to-speech/");
        return requests.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(requests.last().body).object();
    }
    [[nodiscard]] qsizetype requestCount() const { return server.requests("/v1/text-to-speech/").size(); }
    [[nodiscard]] bool isGenerating(const model::LineId &id) const { return project->runtime().state(id).isGenerating; }
    [[nodiscard]] qsizetype takeCount(qsizetype index) const { return project.line(index).takes.size(); }
    [[nodiscard]] qsizetype takeCount() const {
        qsizetype count = 0;
        for (qsizetype i = 0; i < project->scriptLineIds().size(); ++i)
            count += takeCount(i);
        return count;
    }
    /// The audio files in the private caches folder.
    [[nodiscard]] static QStringList cachedFiles() {
        return QDir(base::PrivateFolders::caches()).entryList({QStringLiteral("*.wav"), QStringLiteral("*.mp3")});
    }

    QTemporaryDir directory;
    base::UserDefaults defaults{directory.filePath(QStringLiteral("defaults.ini"))};
    speech::KeychainHelper credentials;
    LoopbackServer server;
    speech::ElevenLabsService service{defaults, credentials, nullptr, hastyTiming()};
    ScriptProject project;
    controller::LineGenerator generator{*project, service};
};

} // namespace orlenta::test
