#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "controller/document/TypingSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "shell/account/AccountDialog.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "speech/LocalVoices.h"
#include "support/LoopbackServer.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using test::LoopbackServer;
using testing::buttonNamed;
using testing::waitUntil;

const QByteArray speechPath = "/v1/text-to-speech/";

/// A tenth of a second of silence, as raw samples.
QByteArray silence() {
    return LoopbackServer::reply(200, QByteArray(8820, '\0'), "audio/pcm");
}

/// A window whose service is a loopback server that answers line by line, when the test says so.
class GeneratingTest : public ::testing::Test {
protected:
    GeneratingTest() { session.defaults.setAudioFormat(u"wav"_s); }
    ~GeneratingTest() override {
        for (const auto &open : windows.open())
            open->controller().discardChanges();
    }

    void open(const QStringList &texts) {
        QStringList lines;
        for (const QString &text : texts)
            lines.append(u"Clara: "_s + text);
        ASSERT_TRUE(windows.openProject(session.makeProject(u"Scene"_s, lines).folder));
        connectService();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    void connectService() {
        project().elevenLabsService().useEndpoint(server.url());
        project().elevenLabsService().setApiKey(u"key"_s);
        server.answer("/v1/user", LoopbackServer::reply(401, "{}"));
    }
    /// Requests for speech wait for speak().
    void holdSpeech() {
        server.handle(speechPath,
                      [this](const test::LoopbackRequest &, QTcpSocket &socket) { waiting.append(&socket); });
    }
    /// Answers the request that waits, once there is one.
    void speak() {
        ASSERT_TRUE(waitUntil([this] { return !waiting.isEmpty(); }));
        QTcpSocket *socket = waiting.takeFirst();
        socket->write(silence());
        socket->disconnectFromHost();
    }
    void selectAllAndGenerate() {
        project().controller().selection().selectAll();
        action(CommandId::Generate).trigger();
    }
    [[nodiscard]] bool waitForEnd() {
        return waitUntil([this] { return !project().session().generator().queue().isActive(); });
    }

    [[nodiscard]] ProjectWindowController &project() const { return *windows.open().front(); }
    [[nodiscard]] ProjectWindow &window() const { return project().window(); }
    [[nodiscard]] QAction &action(CommandId id) const { return *window().actions()[id]; }
    [[nodiscard]] qsizetype requestCount() const { return server.requests(speechPath).size(); }
    [[nodiscard]] const model::ProjectLine &line(qsizetype index) const {
        return *project().controller().lines().find(project().controller().scriptLineIds().at(index));
    }
    [[nodiscard]] qsizetype takeCount() const {
        qsizetype count = 0;
        for (qsizetype i = 0; i < project().controller().scriptLineIds().size(); ++i)
            count += line(i).takes.size();
        return count;
    }
    /// The text of the row's generate button.
    [[nodiscard]] QString stateOf(qsizetype index) const {
        const LineRow *row = window().editor().list().rowFor(line(index).lineId);
        for (const QPushButton *button : row->findChildren<QPushButton *>())
            if (button->accessibleName().endsWith(u"enerate line %1"_s.arg(index + 1)))
                return button->isEnabled() ? button->accessibleDescription()
                                           : u"(%1)"_s.arg(button->accessibleDescription());
        return {};
    }
    [[nodiscard]] bool shows(const QString &text) const {
        for (const QLabel *label : window().findChildren<QLabel *>())
            if (label->isVisible() && label->text() == text)
                return true;
        return false;
    }
    [[nodiscard]] QMessageBox *alert() const { return window().alerts().box(); }
    [[nodiscard]] QString notice() const {
        const auto current = project().controller().notices().current();
        return current ? current->text : QString();
    }

    testing::ShellSession session;
    ProjectWindows windows{session.context};
    LoopbackServer server;
    QList<QTcpSocket *> waiting;
};

TEST_F(GeneratingTest, ABatchIsCountedItsRowsWaitAndStopLetsTheRunningLineFinish) {
    open({u"One."_s, u"Two."_s, u"Three."_s});
    holdSpeech();
    EXPECT_FALSE(action(CommandId::StopGenerating).isEnabled());
    selectAllAndGenerate();
    speak();
    ASSERT_TRUE(waitUntil([this] { return shows(u"Generating 2 of 3"_s) && !waiting.isEmpty(); }));
    EXPECT_EQ(stateOf(0), u"Regenerate"_s);
    EXPECT_EQ(stateOf(1), u"(Generating...)"_s);
    EXPECT_EQ(stateOf(2), u"(Waiting…)"_s);
    auto *stop = buttonNamed(window(), u"Stop"_s);
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(stop->accessibleName(), u"Stop Generating"_s);
    EXPECT_NE(stop->focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(testing::unnamedControls(*stop->parentWidget()), QStringList());
    EXPECT_EQ(testing::clippedTexts(*stop->parentWidget()), QStringList());
    QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(stateOf(2), u"Generate"_s);
    EXPECT_TRUE(shows(u"Generating 2 of 2"_s));
    EXPECT_FALSE(stop->isEnabled());
    speak();
    ASSERT_TRUE(waitForEnd());
    EXPECT_FALSE(stop->isVisible());
    EXPECT_EQ(requestCount(), 2);
    EXPECT_EQ(takeCount(), 2);
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(GeneratingTest, PressingTheKeyAgainPaysForNoLineTwice) {
    open({u"One."_s, u"Two."_s, u"Three."_s});
    EXPECT_FALSE(action(CommandId::Generate).autoRepeat());
    holdSpeech();
    selectAllAndGenerate();
    for (int line = 0; line < 3; ++line) {
        QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier);
        speak();
    }
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(requestCount(), 3);
    EXPECT_EQ(takeCount(), 3);
}

TEST_F(GeneratingTest, ASignOutDuringABatchShowsOneMessageWithTheNumberOfLines) {
    open({u"One."_s, u"Two."_s, u"Three."_s});
    holdSpeech();
    selectAllAndGenerate();
    ASSERT_TRUE(waitUntil([this] { return !waiting.isEmpty(); }));
    project().elevenLabsService().disconnectAccount();
    speak();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(requestCount(), 1);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->informativeText(), u"2 lines weren't generated: you signed out or switched accounts first."_s);
    alert()->accept();
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(GeneratingTest, WithoutAConnectionTheMessageLeadsToTheAccountPanelAndToLocalVoices) {
    open({u"One."_s});
    project().elevenLabsService().setApiKey({});
    const auto press = [this](const QString &way) {
        action(CommandId::Generate).trigger();
        ASSERT_TRUE(waitUntil([this] { return alert() != nullptr; }));
        QAbstractButton *button = buttonNamed(*alert(), way);
        ASSERT_NE(button, nullptr) << qPrintable(way);
        EXPECT_EQ(testing::unnamedControls(*alert()), QStringList());
        button->click();
        EXPECT_EQ(alert(), nullptr);
    };
    action(CommandId::Generate).trigger();
    EXPECT_TRUE(alert()->informativeText().startsWith(u"Connect your ElevenLabs account in the account panel"_s));
    press(u"Open Account Panel"_s);
    auto *panel = window().findChild<AccountDialog *>();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    panel->close();

    // There is a key, but no service.
    project().elevenLabsService().useEndpoint(QUrl(u"http://127.0.0.1:1"_s));
    project().elevenLabsService().setApiKey(u"key"_s);
    press(u"Use Local Voices"_s);
    ASSERT_TRUE(waitUntil([this] { return session.localVoices.state() == speech::LocalVoices::State::On; }));
    ASSERT_TRUE(waitUntil([this] { return project().elevenLabsService().isAuthenticated(); }));
    action(CommandId::Generate).trigger();
    EXPECT_TRUE(waitUntil([this] { return takeCount() == 1; }));
}

TEST_F(GeneratingTest, ALinePastItsModelsLimitShowsItsLengthBeforeItIsRequested) {
    open({u"One."_s, u"word "_s.repeated(1062) + u"ab"_s, u"Three."_s});
    EXPECT_TRUE(shows(u"5,312 of 5,000 characters"_s));
    server.answer(speechPath, silence());
    selectAllAndGenerate();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(requestCount(), 2);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->informativeText(),
              u"1 line wasn't generated: the text is longer than its model takes; shorten or split it."_s);
    project().controller().typing().type(line(1).lineId, u"Short now."_s);
    EXPECT_FALSE(shows(u"5,312 of 5,000 characters"_s));
}

/// Takes away the place for takes, and gives it back.
class UnstoredTakesInWindowTest : public GeneratingTest {
protected:
    void block() const {
        QDir(blocked()).removeRecursively();
        QFile file(blocked());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void unblock() const { QFile::remove(blocked()); }
    /// The service answers two lines, but their folder goes while it speaks.
    void generateWithoutAPlace() {
        open({u"One."_s, u"Two."_s});
        for (qsizetype index = 0; index < 2; ++index) {
            holdSpeech();
            project().controller().selection().selectAlone(line(index).lineId);
            action(CommandId::Generate).trigger();
            ASSERT_TRUE(waitUntil([this] { return !waiting.isEmpty(); }));
            block();
            speak();
            ASSERT_TRUE(waitForEnd());
            unblock();
        }
    }
    void press(const QString &text) {
        QAbstractButton *button = buttonNamed(*window().editor().findChild<NoticeBar *>(), text);
        ASSERT_NE(button, nullptr);
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0);
        EXPECT_FALSE(button->toolTip().isEmpty());
        button->click();
    }
    [[nodiscard]] static QStringList keptFiles() {
        return QDir(controller::UnstoredTakes::folder()).entryList(QDir::Files);
    }
    [[nodiscard]] static QString expected() {
        return u"2 generated takes couldn't be stored in the project. They are kept in %1"_s.arg(
            controller::UnstoredTakes::folder());
    }

private:
    [[nodiscard]] QString blocked() const { return session.path(u"Scene/Audio Files/Generated"_s); }
};

TEST_F(UnstoredTakesInWindowTest, TheyAreShownWithTheirPlaceAndCanBeStoredAgain) {
    const QStringList before = keptFiles();
    generateWithoutAPlace();
    EXPECT_EQ(takeCount(), 0);
    EXPECT_EQ(keptFiles().size(), before.size() + 4) << "two takes, each with its record";
    EXPECT_EQ(notice(), expected());
    const QSignalSpy tried(&project().session().generator().unstoredTakes(), &controller::UnstoredTakes::changed);
    block();
    press(u"Store Again"_s);
    ASSERT_TRUE(waitUntil([&tried] { return tried.count() == 1; }));
    EXPECT_EQ(notice(), expected()) << "still no place";
    unblock();
    press(u"Store Again"_s);
    EXPECT_TRUE(waitUntil([this] { return takeCount() == 2; }));
    EXPECT_TRUE(waitUntil([&tried] { return tried.count() == 2; }));
    EXPECT_NE(notice(), expected());
    EXPECT_EQ(keptFiles(), before);
}

TEST_F(UnstoredTakesInWindowTest, TheyAreThereAgainWhenTheProjectIsOpenedAgain) {
    generateWithoutAPlace();
    const model::VoiceId voice = *line(0).voiceId;
    ASSERT_TRUE(project().saveCurrentAndSyncTitle());
    const QString folder = project().folder();
    ASSERT_TRUE(window().close());
    ASSERT_TRUE(windows.isEmpty());
    ASSERT_TRUE(windows.openProject(session.makeProject(u"Another"_s, {u"One."_s}).folder));
    EXPECT_EQ(notice(), QString()) << "they belong to one project";
    ASSERT_TRUE(window().close());

    ASSERT_TRUE(windows.openProject(folder));
    EXPECT_EQ(notice(), expected());
    press(u"Store Again"_s);
    EXPECT_TRUE(waitUntil([this] { return takeCount() == 2; }));
    EXPECT_EQ(line(0).takes.first().voiceId, voice);
    EXPECT_EQ(line(0).takes.first().characterCount, 4);
    EXPECT_TRUE(line(0).takes.first().filename.startsWith(u"Clara - One.01 - take 1"_s))
        << qPrintable(line(0).takes.first().filename);
    EXPECT_TRUE(waitUntil([this] { return notice().isEmpty(); }));
}

} // namespace
} // namespace orlenta::shell
