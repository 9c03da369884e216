#include "speech/account/KeychainHelper.h"

#include <gtest/gtest.h>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>

#include "speech/account/AccountReplies.h"
#include "support/KeyringSession.h"
#include "support/LoopbackServer.h"

namespace orlenta::speech {

namespace {

using test::KeyringSession;
using test::LoopbackServer;

constexpr auto probeLimit = std::chrono::seconds(60);

/// What the user sees after each action; every call runs its actions in a new process.
QList<QJsonObject> seenAfter(const QProcessEnvironment &environment, const QStringList &actions,
                             std::chrono::milliseconds patience = std::chrono::seconds(50)) {
    LoopbackServer server;
    answerAccount(server);
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QEventLoop loop;
    QObject::connect(&probe, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(probeLimit, &loop, &QEventLoop::quit);
    probe.start(QStringLiteral(ORLENTA_KEYRING_PROBE),
                QStringList{server.url().toString(), QString::number(patience.count())} + actions);
    loop.exec();
    EXPECT_EQ(probe.state(), QProcess::NotRunning) << "the keyring left the client hanging";
    QList<QJsonObject> seen;
    for (const QByteArray &line : probe.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            seen.append(QJsonDocument::fromJson(line).object());
    }
    EXPECT_EQ(seen.size(), actions.size());
    while (seen.size() < actions.size())
        seen.append(QJsonObject());
    return seen;
}

std::string seenText(const QJsonObject &seen) {
    return QString(seen.value(QStringLiteral("connected")).toBool() ? QStringLiteral("connected")
                                                                    : QStringLiteral("signed out"))
        .append(QStringLiteral("; ") + seen.value(QStringLiteral("error")).toString())
        .toStdString();
}

std::string breadcrumbsText(const QJsonObject &seen) {
    return seen.value(QStringLiteral("breadcrumbs")).toString().toStdString();
}

const QString notSaved = QStringLiteral("Couldn't save your API key to the keychain. Please try again.");
const QString notRemoved = QStringLiteral("Couldn't remove the saved key from the Keychain. The app may reconnect "
                                          "automatically on next launch.");
const std::string connected = "connected; ";
const std::string signedOut = "signed out; ";

} // namespace

TEST(KeychainHelper, AnUnlockedKeyringKeepsTheKeyUntilTheSignOut) {
    KeyringSession session(KeyringSession::Daemon::Unlocked);
    EXPECT_EQ(seenText(seenAfter(session.environment(), {QStringLiteral("connect")}).first()), connected);
    const auto later = seenAfter(session.environment(),
                                 {QStringLiteral("start"), QStringLiteral("connect"), QStringLiteral("sign-out"),
                                  QStringLiteral("start"), QStringLiteral("sign-out")});
    EXPECT_EQ(seenText(later.at(0)), connected);
    EXPECT_EQ(later.at(0).value(QStringLiteral("key")).toString(), QStringLiteral("key-\u00e9-1"));
    EXPECT_EQ(seenText(later.at(1)), connected);
    for (qsizetype i = 2; i < later.size(); ++i) {
        EXPECT_EQ(seenText(later.at(i)), signedOut);
        EXPECT_EQ(breadcrumbsText(later.at(i)), "");
    }
}

TEST(KeychainHelper, ALockedKeyringReadsAsNoKeyAndRefusesToForgetIt) {
    KeyringSession session(KeyringSession::Daemon::Unlocked);
    seenAfter(session.environment(), {QStringLiteral("connect")});
    session.lock();
    const auto seen = seenAfter(session.environment(), {QStringLiteral("start"), QStringLiteral("sign-out")});
    EXPECT_EQ(seenText(seen.at(0)), signedOut);
    EXPECT_EQ(breadcrumbsText(seen.at(0)), "Keychain read failed");
    EXPECT_EQ(seenText(seen.at(1)), signedOut + notRemoved.toStdString());
    EXPECT_EQ(breadcrumbsText(seen.at(1)), "Keychain delete failed");
}

TEST(KeychainHelper, ARefusedWriteIsToldOnlyToWhoPressedConnect) {
    KeyringSession session(KeyringSession::Daemon::Unlocked);
    session.lock();
    const auto added = seenAfter(session.environment(), {QStringLiteral("connect"), QStringLiteral("connect-quietly")});
    EXPECT_EQ(seenText(added.at(0)), connected + notSaved.toStdString());
    EXPECT_EQ(breadcrumbsText(added.at(0)), "Keychain save.add failed");
    EXPECT_EQ(seenText(added.at(1)), connected);
}

TEST(KeychainHelper, ADismissedPromptLeavesTheKeyForTheSessionOnly) {
    KeyringSession session(KeyringSession::Daemon::Unlocked);
    seenAfter(session.environment(), {QStringLiteral("connect")});
    session.lock();
    const test::KeyringPrompter &prompter = session.showPrompts(test::KeyringPrompter::User::Dismisses);
    const auto seen = seenAfter(session.environment(), {QStringLiteral("start"), QStringLiteral("connect")});
    EXPECT_EQ(seenText(seen.at(0)), signedOut);
    EXPECT_EQ(seenText(seen.at(1)), connected + notSaved.toStdString());
    EXPECT_EQ(breadcrumbsText(seen.at(1)), "Keychain save.update failed");
    EXPECT_GT(prompter.prompts(), 0);
}

TEST(KeychainHelper, AnUnansweredPromptHoldsTheClientOnlyUntilTheTimeOut) {
    KeyringSession session(KeyringSession::Daemon::Unlocked);
    session.lock();
    const test::KeyringPrompter &prompter = session.showPrompts(test::KeyringPrompter::User::Ignores);
    const auto seen = seenAfter(session.environment(), {QStringLiteral("connect"), QStringLiteral("sign-out")},
                                std::chrono::milliseconds(1500));
    EXPECT_EQ(seenText(seen.at(0)), connected + notSaved.toStdString());
    EXPECT_EQ(seenText(seen.at(1)), signedOut + notRemoved.toStdString());
    EXPECT_GT(prompter.prompts(), 0);
}

TEST(KeychainHelper, WithoutAKeyringOrABusTheKeyLivesForTheSessionAndTheUserIsTold) {
    const KeyringSession session(KeyringSession::Daemon::None);
    QProcessEnvironment withoutBus = session.environment();
    withoutBus.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/bus"));
    for (const QProcessEnvironment &environment : {session.environment(), withoutBus}) {
        const auto seen = seenAfter(environment, {QStringLiteral("start"), QStringLiteral("connect"),
                                                  QStringLiteral("connect-quietly"), QStringLiteral("sign-out")});
        EXPECT_EQ(seenText(seen.at(0)), signedOut);
        EXPECT_EQ(seenText(seen.at(1)), connected + notSaved.toStdString());
        EXPECT_EQ(seenText(seen.at(2)), connected);
        EXPECT_EQ(seenText(seen.at(3)), signedOut + notRemoved.toStdString());
    }
}

} // namespace orlenta::speech
