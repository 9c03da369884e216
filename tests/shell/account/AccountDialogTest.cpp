#include "shell/account/AccountDialog.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "shell/controls/ToggleSwitch.h"
#include "shell/ShellSession.h"
#include "speech/account/AccountReplies.h"
#include "speech/account/ElevenLabsService.h"
#include "support/LoopbackServer.h"

namespace orlenta {
namespace {

using shell::AccountDialog;
using speech::LocalVoices;
using testing::ShellSession;
using testing::waitUntil;

/// A service and its panel. The service can use any address; the panel treats it as the account.
struct AccountPanel {
    explicit AccountPanel(ShellSession &session)
        : service(session.defaults, session.credentials), dialog(service, session.localVoices) {
        dialog.show();
    }

    speech::ElevenLabsService service;
    AccountDialog dialog;
};

void typeKey(AccountDialog &dialog, const QString &key) {
    dialog.keyField()->clear();
    QTest::keyClicks(dialog.keyField(), key);
}

TEST(AccountDialog, TheSwitchStartsTheLocalVoicesAndConnectsToThem) {
    ShellSession session;
    AccountPanel panel(session);
    session.localVoices.attach(panel.service);
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Not connected"));
    panel.dialog.localVoicesSwitch()->click();
    EXPECT_TRUE(session.defaults.useLocalVoices());
    ASSERT_TRUE(waitUntil([&] { return !panel.service.voices().isEmpty(); }));
    EXPECT_EQ(session.localVoices.state(), LocalVoices::State::On);
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Local voices are in use"));
    EXPECT_FALSE(panel.dialog.keyField()->isEnabled());
    EXPECT_FALSE(panel.dialog.connectButton()->isEnabled());

    panel.dialog.localVoicesSwitch()->click();
    EXPECT_EQ(session.localVoices.state(), LocalVoices::State::Off);
    EXPECT_FALSE(session.defaults.useLocalVoices());
    EXPECT_TRUE(waitUntil([&] { return !panel.service.isAuthenticated() && !panel.service.isLoading(); }));
    EXPECT_TRUE(panel.service.voices().isEmpty());
}

TEST(AccountDialog, IfTheProgramCannotStartTheSwitchTurnsOff) {
    ShellSession session(QStringLiteral("/nowhere/missing-program"));
    AccountPanel panel(session);
    panel.dialog.localVoicesSwitch()->click();
    ASSERT_TRUE(waitUntil([&] { return session.localVoices.state() == LocalVoices::State::Failed; }));
    EXPECT_FALSE(session.localVoices.failureReason().isEmpty());
    EXPECT_FALSE(panel.dialog.localVoicesSwitch()->isChecked());
    EXPECT_FALSE(session.defaults.useLocalVoices());
}

TEST(AccountDialog, ConnectsWithAKeyRejectsAWrongOneAndSignsOut) {
    ShellSession host;
    ASSERT_TRUE(host.startLocalVoices());
    speech::ElevenLabsService known(host.defaults, host.credentials);
    host.localVoices.attach(known);
    ASSERT_TRUE(waitUntil([&] { return known.isAuthenticated(); }));

    ShellSession session;
    AccountPanel panel(session);
    panel.service.useEndpoint(known.access().endpoint);
    EXPECT_EQ(panel.dialog.keyField()->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(panel.dialog.connectButton()->isEnabled());
    typeKey(panel.dialog, QStringLiteral("wrong"));
    panel.dialog.connectButton()->click();
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Connecting…"));
    ASSERT_TRUE(waitUntil([&] { return !panel.service.isLoading(); }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Connection failed"));
    EXPECT_EQ(panel.dialog.errorText(), panel.service.errorMessage());
    EXPECT_FALSE(panel.dialog.errorText().isEmpty());

    typeKey(panel.dialog, known.apiKey());
    panel.dialog.connectButton()->click();
    ASSERT_TRUE(waitUntil([&] { return panel.service.isAuthenticated(); }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Connected"));
    EXPECT_FALSE(panel.dialog.keyField()->isVisible());

    panel.dialog.signOutButton()->click();
    ASSERT_TRUE(waitUntil([&] { return panel.service.apiKey().isEmpty(); }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Not connected"));
    EXPECT_TRUE(panel.dialog.keyField()->isVisible());
}

TEST(AccountDialog, ARefreshUpdatesTheAccountAndAFailedOneKeepsTheConnection) {
    test::LoopbackServer server;
    speech::answerAccount(server);
    ShellSession session;
    AccountPanel panel(session);
    panel.service.useEndpoint(server.url());
    EXPECT_FALSE(panel.dialog.refreshButton()->isVisible());
    typeKey(panel.dialog, QStringLiteral("key"));
    panel.dialog.connectButton()->click();
    ASSERT_TRUE(waitUntil([&] { return panel.dialog.refreshButton()->isVisible(); }));

    server.answer("/v1/user", test::LoopbackServer::json(speech::userJson(250)));
    panel.dialog.refreshButton()->click();
    EXPECT_TRUE(waitUntil([&] { return panel.service.user()->creditsText() == QStringLiteral("250 credits"); }));
    server.answer("/v1/user", test::LoopbackServer::reply(500, R"({"detail":"boom"})"));
    panel.dialog.refreshButton()->click();
    const QString failed = QStringLiteral("Failed to refresh: HTTP error 500: boom");
    EXPECT_TRUE(waitUntil([&] { return panel.dialog.errorText() == failed; }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Connected"));
}

TEST(AccountDialog, ConnectsAndSignsOutWithoutAKeyring) {
    test::LoopbackServer server;
    speech::answerAccount(server);
    ShellSession session;
    AccountPanel panel(session);
    panel.service.useEndpoint(server.url(), speech::ElevenLabsService::KeyKeeping::Keyring);
    typeKey(panel.dialog, QStringLiteral("key"));
    panel.dialog.connectButton()->click();
    const QString notSaved = QStringLiteral("Couldn't save your API key to the keychain. Please try again.");
    EXPECT_TRUE(waitUntil([&] { return panel.dialog.errorText() == notSaved && !panel.service.isLoading(); }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Connected"));

    panel.dialog.signOutButton()->click();
    const QString notRemoved = QStringLiteral("Couldn't remove the saved key from the Keychain. The app may reconnect "
                                              "automatically on next launch.");
    EXPECT_TRUE(waitUntil([&] { return panel.dialog.errorText() == notRemoved; }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Not connected"));
}

TEST(AccountDialog, AnEmptyFieldRetriesTheSavedKey) {
    test::LoopbackServer server;
    ShellSession session;
    AccountPanel panel(session);
    panel.service.useEndpoint(server.url());
    panel.service.setApiKey(QStringLiteral("saved-key"));
    panel.service.connectAccount(speech::ElevenLabsService::KeychainErrors::Hide);
    ASSERT_TRUE(waitUntil([&] { return panel.dialog.stateText() == QStringLiteral("Connection failed"); }));
    EXPECT_TRUE(panel.dialog.keyField()->text().isEmpty());

    speech::answerAccount(server);
    panel.dialog.keyField()->setFocus();
    const qsizetype before = server.requests("/v1/user").size();
    QTest::keyClick(panel.dialog.keyField(), Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return panel.dialog.stateText() == QStringLiteral("Connected"); }));
    EXPECT_EQ(server.requests("/v1/user").size(), before + 1) << "one key press connects once";
    EXPECT_EQ(server.requests().last().headers.value("xi-api-key"), "saved-key");
}

TEST(AccountDialog, ReturnConnectsAndClearsTheTypedKey) {
    test::LoopbackServer server;
    speech::answerAccount(server);
    ShellSession session;
    AccountPanel panel(session);
    panel.service.useEndpoint(server.url());
    testing::buttonNamed(panel.dialog, QStringLiteral("Show"))->click();
    typeKey(panel.dialog, QStringLiteral("typed-key"));
    QTest::keyClick(panel.dialog.keyField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return panel.dialog.stateText() == QStringLiteral("Connected"); }));
    EXPECT_EQ(server.requests("/v1/user").size(), 1);
    panel.dialog.signOutButton()->click();
    EXPECT_TRUE(panel.dialog.keyField()->text().isEmpty());
    EXPECT_EQ(panel.dialog.keyField()->echoMode(), QLineEdit::Password);

    server.answer("/v1/user", test::LoopbackServer::reply(401, "{}"));
    panel.dialog.keyField()->setFocus();
    typeKey(panel.dialog, QStringLiteral("wrong-key"));
    QTest::keyClick(panel.dialog.keyField(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return panel.dialog.stateText() == QStringLiteral("Connection failed"); }));
    EXPECT_TRUE(panel.dialog.keyField()->hasFocus()) << "so that Return tries again";
    panel.dialog.signOutButton()->click();
    EXPECT_TRUE(panel.dialog.keyField()->text().isEmpty());
}

TEST(AccountDialog, UnresponsiveLocalVoicesCanBeRetried) {
    test::LoopbackServer server;
    const QTemporaryDir folder;
    QFile program(folder.filePath(QStringLiteral("voices")));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho " + server.url().toEncoded() + "\nexec cat\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    ShellSession session(program.fileName());
    AccountPanel panel(session);
    panel.dialog.localVoicesSwitch()->click();
    session.localVoices.attach(panel.service);
    ASSERT_TRUE(waitUntil([&] { return panel.dialog.retryLocalVoicesButton()->isVisible(); }));
    EXPECT_EQ(panel.dialog.stateText(), QStringLiteral("Not connected"));
    EXPECT_EQ(panel.dialog.localVoicesText(),
              QStringLiteral("The local voices are running but don't answer. HTTP error 404: no such address"));

    speech::answerAccount(server);
    panel.dialog.retryLocalVoicesButton()->click();
    EXPECT_TRUE(waitUntil([&] { return panel.dialog.stateText() == QStringLiteral("Local voices are in use"); }));
    EXPECT_EQ(panel.dialog.localVoicesText(), QStringLiteral("The local voices are ready: 2 voices."));
    EXPECT_FALSE(panel.dialog.retryLocalVoicesButton()->isVisible());
}

TEST(AccountDialog, ShowRevealsTheKey) {
    ShellSession session;
    AccountPanel panel(session);
    testing::buttonNamed(panel.dialog, QStringLiteral("Show"))->click();
    EXPECT_EQ(panel.dialog.keyField()->echoMode(), QLineEdit::Normal);
    testing::buttonNamed(panel.dialog, QStringLiteral("Hide"))->click();
    EXPECT_EQ(panel.dialog.keyField()->echoMode(), QLineEdit::Password);
}

} // namespace
} // namespace orlenta
