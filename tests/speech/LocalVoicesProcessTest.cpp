#include "speech/LocalVoicesProcess.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

namespace orlenta::speech {

namespace {

using namespace std::chrono_literals;

constexpr int processLimit = 30'000;

/// A shell script as the program, in `folder`.
QString programOf(const QTemporaryDir &folder, const QByteArray &script) {
    QFile file(folder.filePath(QStringLiteral("voices")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("#!/bin/sh\n" + script);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return file.fileName();
}

} // namespace

TEST(LocalVoicesProcess, TellsTheAddressAndTheKeyAndEndsWithTheStop) {
    const QTemporaryDir folder;
    const QString program =
        programOf(folder, "echo http://127.0.0.1:4711; printf %s \"$ORLENTA_LOCAL_VOICES_KEY\" > \"$0.key\"; "
                          "while read line; do :; done; : > \"$0.ended\"");
    LocalVoicesProcess voices(program, 20s);
    QSignalSpy ready(&voices, &LocalVoicesProcess::ready);
    QSignalSpy failed(&voices, &LocalVoicesProcess::failed);
    voices.start();
    ASSERT_TRUE(ready.wait(processLimit));
    EXPECT_EQ(ready.first().at(0).toUrl(), QUrl(QStringLiteral("http://127.0.0.1:4711")));
    QFile key(program + QStringLiteral(".key"));
    ASSERT_TRUE(QTest::qWaitFor([&key] { return key.size() > 0; }, processLimit));
    ASSERT_TRUE(key.open(QIODevice::ReadOnly));
    EXPECT_EQ(key.readAll(), ready.first().at(1).toString().toUtf8());
    EXPECT_EQ(ready.first().at(1).toString().size(), 32);
    voices.stop();
    EXPECT_FALSE(voices.isRunning());
    EXPECT_TRUE(
        QTest::qWaitFor([&program] { return QFile::exists(program + QStringLiteral(".ended")); }, processLimit));
    voices.start();
    EXPECT_TRUE(ready.wait(processLimit)) << "it can be started again";
    EXPECT_TRUE(failed.isEmpty());
}

TEST(LocalVoicesProcess, EveryFailedStartIsReportedOnce) {
    struct Case {
        QByteArray script;
        QString reason;
    };
    const std::vector<Case> cases{
        {"exit 3", QStringLiteral("The local voices program quit before it was ready.")},
        {"echo http://example.org:80; cat", QStringLiteral("The local voices program didn't report its address.")},
        {"echo hello; cat", QStringLiteral("The local voices program didn't report its address.")},
        {"echo http://127.0.0.1:1; exit 0", QStringLiteral("The local voices ended unexpectedly.")},
        {"exec cat", QStringLiteral("The local voices didn't start in time.")},
    };
    for (const Case &c : cases) {
        const QTemporaryDir folder;
        LocalVoicesProcess voices(programOf(folder, c.script), c.script == "exec cat" ? 200ms : 20'000ms);
        QSignalSpy failed(&voices, &LocalVoicesProcess::failed);
        voices.start();
        ASSERT_TRUE(failed.wait(processLimit)) << c.script.constData();
        EXPECT_EQ(failed.first().first().toString(), c.reason);
        EXPECT_FALSE(voices.isRunning());
    }
    LocalVoicesProcess missing(QStringLiteral("/nowhere/voices"), 20s);
    QSignalSpy failed(&missing, &LocalVoicesProcess::failed);
    missing.start();
    EXPECT_TRUE(!failed.isEmpty() || failed.wait(processLimit));
    EXPECT_EQ(failed.size(), 1);
}

} // namespace orlenta::speech
