#include "base/files/PrivateFolders.h"

#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

namespace orlenta::base {
namespace {

using namespace Qt::StringLiterals;

class PrivateFoldersIn : public ::testing::Test {
protected:
    PrivateFoldersIn() { ::setenv("TMPDIR", QFile::encodeName(m_folder.path()).constData(), 1); }
    ~PrivateFoldersIn() override { ::setenv("TMPDIR", m_oldFolder.constData(), 1); }

    [[nodiscard]] QString usualPath() const { return m_folder.filePath(u"orlenta-"_s + QString::number(::getuid())); }
    [[nodiscard]] static mode_t mode(const QString &path) {
        struct stat status {};
        ::lstat(QFile::encodeName(path).constData(), &status);
        return status.st_mode & 07777;
    }

    QByteArray m_oldFolder = qgetenv("TMPDIR");
    QTemporaryDir m_folder;
};

TEST_F(PrivateFoldersIn, TheTemporaryFolderIsTheUsersAloneAndSharedByThreads) {
    std::vector<std::string> found(8);
    std::vector<std::thread> threads;
    for (std::string &path : found)
        threads.emplace_back([&path] { path = PrivateFolders::temporary().toStdString(); });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(std::set<std::string>(found.begin(), found.end()), std::set<std::string>{usualPath().toStdString()});
    EXPECT_EQ(mode(usualPath()), 0700U);
}

TEST_F(PrivateFoldersIn, ATrapUnderTheUsualNameIsLeftAlone) {
    QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), usualPath()));
    const QString folder = PrivateFolders::temporary();
    EXPECT_NE(folder, usualPath());
    EXPECT_TRUE(folder.startsWith(usualPath() + u'-'));
    EXPECT_EQ(mode(folder), 0700U);
    EXPECT_EQ(PrivateFolders::temporary(), folder);
}

TEST_F(PrivateFoldersIn, AFolderOpenToOthersIsNotUsed) {
    ASSERT_TRUE(QDir().mkdir(usualPath()));
    ASSERT_EQ(::chmod(QFile::encodeName(usualPath()).constData(), 0755), 0);
    EXPECT_NE(PrivateFolders::temporary(), usualPath());
}

TEST_F(PrivateFoldersIn, WithoutATemporaryFolderOneAtHomeIsUsed) {
    ::setenv("TMPDIR", QFile::encodeName(m_folder.filePath(u"missing"_s)).constData(), 1);
    const QString folder = PrivateFolders::temporary();
    EXPECT_TRUE(folder.startsWith(PrivateFolders::caches()));
    EXPECT_EQ(mode(folder), 0700U);
}

TEST_F(PrivateFoldersIn, CachesAndSupportAreMadeForTheUserAlone) {
    for (const QString &folder : {PrivateFolders::caches(), PrivateFolders::applicationSupport()}) {
        EXPECT_TRUE(QFileInfo(folder).isDir());
        EXPECT_EQ(mode(folder), 0700U) << folder.toStdString();
    }
}

} // namespace
} // namespace orlenta::base
