#include "base/files/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/FileFolder.h"
#include "base/files/PendingFile.h"
#include "support/FileSizeLimit.h"

namespace orlenta::base {
namespace {

using namespace Qt::StringLiterals;
using orlenta::testing::FileSizeLimit;

class AtomicFile : public test::FileFolder {};

/// Sets the result of flushing a folder in this process, for its lifetime.
class FolderFlushResult final {
public:
    explicit FolderFlushResult(int code) { s_code = code; }
    ~FolderFlushResult() { s_code = 0; }
    FolderFlushResult(const FolderFlushResult &) = delete;
    FolderFlushResult &operator=(const FolderFlushResult &) = delete;

    [[nodiscard]] static int code() { return s_code; }

private:
    static inline std::atomic<int> s_code = 0;
};

TEST_F(AtomicFile, ANewFileHoldsTheDataAndTheUmasksMode) {
    const mode_t oldMask = ::umask(0027);
    const auto written = writeAtomically(path(u"a.orl"_s), "one");
    ::umask(oldMask);
    ASSERT_TRUE(written);
    EXPECT_EQ(content(u"a.orl"_s), "one");
    EXPECT_EQ(mode(u"a.orl"_s), 0640U);
    EXPECT_EQ(names(), QStringList{u"a.orl"_s});
}

TEST_F(AtomicFile, ReplacingKeepsModeAndLink) {
    put(u"real.orl"_s, "old");
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"real.orl"_s)).constData(), 0604), 0);
    ASSERT_TRUE(QFile::link(path(u"real.orl"_s), path(u"link.orl"_s)));
    ASSERT_TRUE(writeAtomically(path(u"link.orl"_s), "new"));
    EXPECT_TRUE(QFileInfo(path(u"link.orl"_s)).isSymLink());
    EXPECT_EQ(content(u"real.orl"_s), "new");
    EXPECT_EQ(mode(u"real.orl"_s), 0604U);
}

TEST_F(AtomicFile, WritingThroughALinkCreatesItsTargetAndALinkCircleFails) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"disk"_s));
    ASSERT_EQ(::symlink("disk/real.orl", encodedPath(u"link.orl"_s).constData()), 0);
    ASSERT_TRUE(writeAtomically(path(u"link.orl"_s), "new"));
    EXPECT_TRUE(QFileInfo(path(u"link.orl"_s)).isSymLink());
    EXPECT_EQ(content(u"disk/real.orl"_s), "new");
    ASSERT_EQ(::symlink("circle.orl", encodedPath(u"circle.orl"_s).constData()), 0);
    const auto written = writeAtomically(path(u"circle.orl"_s), "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, ELOOP);
}

TEST_F(AtomicFile, AShortWriteLeavesTheOldFileAndNothingElse) {
    const QByteArray large(200'000, 'x');
    for (const rlim_t limit : {rlim_t{0}, rlim_t{1}, rlim_t{16'384}, rlim_t{100'000}, rlim_t{199'999}}) {
        put(u"a.orl"_s, "old");
        {
            const FileSizeLimit full(limit);
            const auto written = writeAtomically(path(u"a.orl"_s), large);
            ASSERT_FALSE(written) << limit;
            EXPECT_FALSE(written.error().description().isEmpty());
        }
        EXPECT_EQ(content(u"a.orl"_s), "old");
        EXPECT_EQ(names(), QStringList{u"a.orl"_s});
    }
}

TEST_F(AtomicFile, ATargetThatIsNotAPlainFileOrHasNoFolderFails) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"folder"_s));
    ASSERT_EQ(::mkfifo(encodedPath(u"pipe"_s).constData(), 0600), 0);
    EXPECT_FALSE(writeAtomically(path(u"folder"_s), "x"));
    EXPECT_FALSE(writeAtomically(path(u"pipe"_s), "x"));
    EXPECT_FALSE(writeAtomically(path(u"missing/a.orl"_s), "x"));
    EXPECT_EQ(names(), (QStringList{u"folder"_s, u"pipe"_s}));
}

TEST_F(AtomicFile, ALeftoverTemporaryIsReplacedAndCanBeRemoved) {
    put(u"victim"_s, "untouched");
    ASSERT_TRUE(QFile::link(path(u"victim"_s), path(u"a.orl.tmp"_s)));
    ASSERT_TRUE(writeAtomically(path(u"a.orl"_s), "new"));
    EXPECT_EQ(content(u"victim"_s), "untouched");
    put(u"a.orl.tmp"_s, "half");
    removeStaleTemporary(path(u"a.orl"_s));
    EXPECT_EQ(names(), (QStringList{u"a.orl"_s, u"victim"_s}));
}

TEST_F(AtomicFile, NamesAsLongAsTheFileSystemAllowsWork) {
    const QString name = QString(120, u'\u00e9') + u"name.orl-file-xx"_s.left(15);
    ASSERT_EQ(name.toUtf8().size(), 255);
    ASSERT_TRUE(writeAtomically(path(name), "one"));
    ASSERT_TRUE(writeAtomically(path(name), "two"));
    EXPECT_EQ(content(name), "two");
    EXPECT_EQ(names(), QStringList{name});
}

TEST_F(AtomicFile, AFileBeingWrittenIsNotALeftover) {
    auto pending = PendingFile::create(path(u"a.orl"_s));
    ASSERT_TRUE(pending);
    ASSERT_EQ(pending->descriptor().write(QByteArray("first")), 0);
    removeStaleTemporary(path(u"a.orl"_s));
    std::thread other([&] { EXPECT_TRUE(writeAtomically(path(u"a.orl"_s), "second")); });
    // A long copy to one file doesn't block writing another file in the folder.
    EXPECT_TRUE(writeAtomically(path(u"b.orl"_s), "beside"));
    EXPECT_TRUE(pending.value().commit(5));
    other.join();
    EXPECT_EQ(content(u"a.orl"_s), "second");
    EXPECT_EQ(names(), (QStringList{u"a.orl"_s, u"b.orl"_s}));
}

TEST_F(AtomicFile, WritersOfOneFileNeverMixTheirData) {
    constexpr int writers = 4;
    constexpr int rounds = 25;
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            const QByteArray data(100'000 + writer, static_cast<char>('a' + writer));
            for (int round = 0; round < rounds; ++round)
                failures += writeAtomically(path(u"a.orl"_s), data) ? 0 : 1;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    const QByteArray final = content(u"a.orl"_s);
    ASSERT_FALSE(final.isEmpty());
    EXPECT_EQ(final, QByteArray(100'000 + (final.front() - 'a'), final.front()));
    EXPECT_EQ(names(), QStringList{u"a.orl"_s});
}

TEST_F(AtomicFile, ReadingRefusesAnythingButAPlainFile) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
    EXPECT_FALSE(readWholeFile(path(u"pipe"_s)));
    EXPECT_FALSE(readWholeFile(m_folder.path()));
    const auto missing = readWholeFile(path(u"missing"_s));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, ENOENT);
    EXPECT_EQ(missing.error().description(), u"missing: No such file or directory"_s);
}

TEST_F(AtomicFile, AFolderThatRefusesToFlushIsFineButAFailedFlushIsAnError) {
    for (const int refusal : {EINVAL, EOPNOTSUPP, EACCES, EPERM, EBADF}) {
        const FolderFlushResult result(refusal);
        EXPECT_TRUE(writeAtomically(path(u"a.orl"_s), "new")) << refusal;
        EXPECT_TRUE(syncToDisk(m_folder.path())) << refusal;
    }
    const FolderFlushResult result(EIO);
    const auto written = writeAtomically(path(u"a.orl"_s), "newer");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, EIO);
    EXPECT_EQ(names(), QStringList{u"a.orl"_s});
}

} // namespace
} // namespace orlenta::base

// Replaces fsync for folders, since the test machine has no file system whose folders refuse or fail to flush.
extern "C" int fsync(int descriptor) {
    struct stat status {};
    const int code = orlenta::base::FolderFlushResult::code();
    if (code != 0 && ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = code;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}
