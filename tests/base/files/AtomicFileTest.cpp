#include "base/files/AtomicFile.h"

#include <atomic>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

namespace orlenta::base {
namespace {

using namespace Qt::StringLiterals;

class AtomicFile : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QStringList names() const {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    void put(const QString &name, const QByteArray &data) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(data), data.size());
    }
    [[nodiscard]] QByteArray content(const QString &name) const {
        auto data = readWholeFile(path(name));
        return data ? *data : QByteArray("unreadable");
    }
    [[nodiscard]] mode_t mode(const QString &name) const {
        struct stat status {};
        ::stat(QFile::encodeName(path(name)).constData(), &status);
        return status.st_mode & 07777;
    }

    QTemporaryDir m_folder;
};

/// For as long as it lives, files of this process can't grow past a size: the nearest thing to a full disk that needs
/// no disk.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        ::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
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

TEST_F(AtomicFile, ATargetThatIsAFolderOrHasNoFolderFails) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"folder"_s));
    EXPECT_FALSE(writeAtomically(path(u"folder"_s), "x"));
    EXPECT_FALSE(writeAtomically(path(u"missing/a.orl"_s), "x"));
    EXPECT_EQ(names(), QStringList{u"folder"_s});
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

TEST_F(AtomicFile, ReadingRefusesWhatIsNoPlainFile) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
    EXPECT_FALSE(readWholeFile(path(u"pipe"_s)));
    EXPECT_FALSE(readWholeFile(m_folder.path()));
    const auto missing = readWholeFile(path(u"missing"_s));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, ENOENT);
    EXPECT_EQ(missing.error().description(), u"missing: No such file or directory"_s);
}

} // namespace
} // namespace orlenta::base
