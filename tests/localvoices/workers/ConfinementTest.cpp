#include "localvoices/workers/Confinement.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

/// Bits of an exit code: what a confined process could do, but mustn't, or can't do, but must.
enum Rights { ReadOutside = 1, WriteInside = 2, Connect = 4, Fork = 8, SignalOthers = 16, Unable = 32 };

bool canOpen(const char *path, int flags) {
    const int descriptor = ::open(path, flags | O_CLOEXEC, 0600);
    if (descriptor >= 0)
        ::close(descriptor);
    return descriptor >= 0;
}

/// Uses a child process because confinement is permanent.
int rightsOfConfined(const QByteArray &folder) {
    const QByteArray inside = folder + "/voice";
    const QByteArray fresh = folder + "/new";
    const pid_t child = ::fork();
    if (child == 0) {
        const Confinement confinement = confineProcess(folder);
        int rights = 0;
        if (canOpen("/etc/passwd", O_RDONLY) && confinement.files)
            rights |= ReadOutside;
        if (canOpen(inside.constData(), O_WRONLY) || canOpen(fresh.constData(), O_WRONLY | O_CREAT))
            rights |= WriteInside;
        if (::socket(AF_INET, SOCK_STREAM, 0) >= 0 || ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0)
            rights |= Connect;
        const pid_t grandchild = ::fork();
        if (grandchild == 0)
            ::_exit(0);
        if (grandchild > 0)
            rights |= Fork;
        if (::kill(::getppid(), 0) == 0)
            rights |= SignalOthers;
        // The work itself must still be possible.
        if (!confinement.calls || !canOpen(inside.constData(), O_RDONLY))
            rights |= Unable;
        ::_exit(rights);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A field of /proc/PID/status.
QByteArray statusOf(qint64 process, const QByteArray &field) {
    QFile file(u"/proc/%1/status"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed();
    return {};
}

} // namespace

TEST(Confinement, AConfinedProcessReadsItsFolderAndNothingElse) {
    const QTemporaryDir folder;
    QFile voice(folder.filePath(u"voice"_s));
    ASSERT_TRUE(voice.open(QIODevice::WriteOnly));
    EXPECT_EQ(rightsOfConfined(folder.path().toUtf8()), 0);
}

TEST(Confinement, AWorkerIsConfinedBeforeItReadsItsJob) {
    QProcess worker;
    worker.start(QStringLiteral(ORLENTA_LOCAL_VOICES_PROGRAM), {u"--speak-one-job"_s});
    ASSERT_TRUE(worker.waitForStarted());
    // The worker is waiting for its job.
    EXPECT_TRUE(QTest::qWaitFor([&] { return statusOf(worker.processId(), "Seccomp") == "2"; }, 30'000));
    EXPECT_EQ(statusOf(worker.processId(), "NoNewPrivs"), "1");
    rlimit cpu{};
    ::prlimit(static_cast<pid_t>(worker.processId()), RLIMIT_CPU, nullptr, &cpu);
    EXPECT_LT(cpu.rlim_cur, 600U);
    worker.closeWriteChannel();
    ASSERT_TRUE(worker.waitForFinished());
    EXPECT_EQ(worker.exitStatus(), QProcess::NormalExit);
}

} // namespace orlenta::localvoices
