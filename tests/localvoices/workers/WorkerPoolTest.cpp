#include "localvoices/workers/WorkerPool.h"

#include <gtest/gtest.h>
#include <QtCore/QEventLoop>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds patience{60'000};

WorkerResult resultOfShell(const QString &script, milliseconds timeLimit = patience) {
    WorkerPool pool(u"/bin/sh"_s, {u"-c"_s, script}, 1, timeLimit);
    QEventLoop loop;
    WorkerResult result;
    pool.start({}, [&](const WorkerResult &r) {
        result = r;
        loop.quit();
    });
    loop.exec();
    EXPECT_EQ(pool.jobCount(), 0);
    return result;
}

} // namespace

TEST(WorkerPool, TellsHowAWorkerEnded) {
    EXPECT_EQ(resultOfShell(u"cat >/dev/null; printf audio"_s).audio, "audio");
    const WorkerResult unusable = resultOfShell(u"cat >/dev/null; printf 'bad audio'; echo noise >&2; exit 3"_s);
    EXPECT_EQ(unusable.exit, WorkerExit::UnusableInput);
    EXPECT_EQ(unusable.complaint, u"bad audio"_s);
    EXPECT_EQ(resultOfShell(u"kill -9 $$"_s).exit, WorkerExit::Failed);
    EXPECT_EQ(resultOfShell(u"exec tail -f /dev/null"_s, milliseconds(50)).exit, WorkerExit::Failed);
}

TEST(WorkerPool, AProgramThatIsntThereIsAFailure) {
    WorkerPool pool(u"/nowhere/at all"_s, {}, 1, patience);
    QEventLoop loop;
    pool.start({}, [&](const WorkerResult &result) {
        EXPECT_EQ(result.exit, WorkerExit::Failed);
        loop.quit();
    });
    loop.exec();
}

TEST(WorkerPool, ACancelledJobMakesRoomForTheNext) {
    WorkerPool pool(u"/bin/sh"_s, {u"-c"_s, u"grep -q wait && exec tail -f /dev/null; printf done"_s}, 1, patience);
    SpeechJob stuck;
    stuck.text = u"wait"_s;
    const WorkerPool::JobId id = pool.start(stuck, [](const WorkerResult &) { ADD_FAILURE() << "was cancelled"; });
    QEventLoop loop;
    QByteArray audio;
    pool.start({}, [&](const WorkerResult &result) {
        audio = result.audio;
        loop.quit();
    });
    QMetaObject::invokeMethod(
        &pool, [&] { pool.cancel(id); }, Qt::QueuedConnection);
    loop.exec();
    EXPECT_EQ(audio, "done");
}

} // namespace orlenta::localvoices
