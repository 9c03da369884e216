#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/AtomicFile.h"
#include "base/files/FileFolder.h"
#include "support/SmallDisk.h"

namespace orlenta::base {
namespace {

using namespace Qt::StringLiterals;
using orlenta::testing::SmallDisk;

class AtomicCopy : public test::FileFolder {
protected:
    /// Content that looks different everywhere, longer than any piece of a copy.
    [[nodiscard]] static QByteArray large() {
        QByteArray data((3 << 20) + 7, Qt::Uninitialized);
        for (qsizetype i = 0; i < data.size(); ++i)
            data[i] = static_cast<char>((i * 2654435761U) >> 13);
        return data;
    }
};

TEST_F(AtomicCopy, ACopyReplacesTheFileAndReportsItsProgress) {
    const SmallDisk otherDisk(16 << 20);
    put(u"a.wav"_s, large());
    for (const QString &to : {path(u"b.wav"_s), otherDisk.path(u"b.wav"_s)}) {
        putAt(to, "old");
        ASSERT_EQ(::chmod(QFile::encodeName(to).constData(), 0604), 0);
        QList<qint64> told;
        const auto copied = copyAtomically(path(u"a.wav"_s), to, {{}, [&](qint64 done, qint64 total) {
                                                                      EXPECT_EQ(total, large().size());
                                                                      told.append(done);
                                                                  }});
        ASSERT_TRUE(copied) << copied.error().description().toStdString();
        EXPECT_EQ(contentAt(to), large());
        EXPECT_TRUE(QFileInfo(to).permission(QFile::ReadOther));
        EXPECT_TRUE(std::ranges::is_sorted(told));
        ASSERT_FALSE(told.isEmpty());
        EXPECT_EQ(told.constLast(), large().size());
    }
    EXPECT_EQ(names(), (QStringList{u"a.wav"_s, u"b.wav"_s}));
}

TEST_F(AtomicCopy, ACancelledCopyLeavesNothing) {
    const SmallDisk otherDisk(16 << 20);
    put(u"a.wav"_s, QByteArray(12 << 20, 'x'));
    std::stop_source stop;
    const auto copied = copyAtomically(path(u"a.wav"_s), otherDisk.path(u"b.wav"_s),
                                       {stop.get_token(), [&](qint64, qint64) { stop.request_stop(); }});
    ASSERT_FALSE(copied);
    EXPECT_TRUE(copied.error().isCancelled());
    EXPECT_EQ(namesIn(otherDisk.path({})), QStringList());
}

TEST_F(AtomicCopy, AFullDiskKeepsTheOldFileAndNothingElse) {
    put(u"a.wav"_s, large());
    const SmallDisk full(1 << 20);
    putAt(full.path(u"b.wav"_s), "old");
    for (const bool isMove : {false, true}) {
        // Without a disk of its own, the file would be renamed, which takes no room.
        if (isMove && !full.isMounted())
            break;
        const auto copied = isMove ? moveAtomically(path(u"a.wav"_s), full.path(u"b.wav"_s))
                                   : copyAtomically(path(u"a.wav"_s), full.path(u"b.wav"_s));
        ASSERT_FALSE(copied);
        EXPECT_EQ(copied.error().path, full.path(u"b.wav"_s));
        EXPECT_EQ(contentAt(full.path(u"b.wav"_s)), "old");
        EXPECT_EQ(namesIn(full.path({})), QStringList{u"b.wav"_s});
    }
    EXPECT_EQ(content(u"a.wav"_s), large());
}

TEST_F(AtomicCopy, CopyingOrMovingAFileOntoItselfKeepsIt) {
    put(u"a.wav"_s, "sound");
    ASSERT_TRUE(QFile::link(path(u"a.wav"_s), path(u"link.wav"_s)));
    ASSERT_EQ(::link(encodedPath(u"a.wav"_s).constData(), encodedPath(u"twin.wav"_s).constData()), 0);
    for (const QString &to : {u"a.wav"_s, u"link.wav"_s, u"twin.wav"_s}) {
        EXPECT_TRUE(copyAtomically(path(u"a.wav"_s), path(to)));
        EXPECT_TRUE(moveAtomically(path(u"a.wav"_s), path(to)));
    }
    EXPECT_EQ(content(u"a.wav"_s), "sound");
    EXPECT_TRUE(QFileInfo(path(u"link.wav"_s)).isSymLink());
    EXPECT_EQ(names(), (QStringList{u"a.wav"_s, u"link.wav"_s, u"twin.wav"_s}));
}

TEST_F(AtomicCopy, OnlyPlainFilesAreCopied) {
    ASSERT_EQ(::mkfifo(encodedPath(u"pipe"_s).constData(), 0600), 0);
    for (const QString &from : {path(u"pipe"_s), u"/dev/zero"_s, m_folder.path(), path(u"missing"_s)}) {
        EXPECT_FALSE(copyAtomically(from, path(u"b.wav"_s))) << from.toStdString();
        EXPECT_FALSE(moveAtomically(from, path(u"b.wav"_s))) << from.toStdString();
    }
    EXPECT_EQ(names(), QStringList{u"pipe"_s});
}

TEST_F(AtomicCopy, AnOpenFileIsCopiedEvenIfRenamedOrDeleted) {
    put(u"lent.wav"_s, large());
    const auto lent = openRegularFile(path(u"lent.wav"_s));
    ASSERT_TRUE(lent);
    ASSERT_TRUE(QFile::remove(path(u"lent.wav"_s)));
    ASSERT_TRUE(copyAtomically(*lent, path(u"b.wav"_s)));
    EXPECT_EQ(content(u"b.wav"_s), large());
}

TEST_F(AtomicCopy, ASourceThatShrinksDuringTheCopyFails) {
    put(u"a.wav"_s, large());
    const auto opened = openRegularFile(path(u"a.wav"_s));
    ASSERT_TRUE(opened);
    ASSERT_EQ(::truncate(encodedPath(u"a.wav"_s).constData(), 1000), 0);
    const auto copied = copyAtomically(*opened, path(u"b.wav"_s));
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().path, path(u"a.wav"_s));
    EXPECT_EQ(names(), QStringList{u"a.wav"_s});
}

TEST_F(AtomicCopy, AMoveRenamesOnOneDiskAndCopiesToAnother) {
    const SmallDisk otherDisk(16 << 20);
    for (const QString &to : {path(u"b.wav"_s), otherDisk.path(u"b.wav"_s)}) {
        put(u"a.wav"_s, large());
        putAt(to, "old");
        ASSERT_EQ(::chmod(QFile::encodeName(to).constData(), 0604), 0);
        ASSERT_TRUE(moveAtomically(path(u"a.wav"_s), to));
        EXPECT_EQ(contentAt(to), large());
        EXPECT_TRUE(QFileInfo(to).permission(QFile::ReadOther));
        EXPECT_FALSE(QFileInfo::exists(path(u"a.wav"_s)));
    }
    EXPECT_EQ(names(), QStringList{u"b.wav"_s});
    EXPECT_EQ(namesIn(otherDisk.path({})), QStringList{u"b.wav"_s});
}

TEST_F(AtomicCopy, AMoveKeepsLinksAndTheirTargets) {
    put(u"real.wav"_s, "old");
    ASSERT_TRUE(QFile::link(path(u"real.wav"_s), path(u"link.wav"_s)));
    put(u"a.wav"_s, "new");
    ASSERT_TRUE(moveAtomically(path(u"a.wav"_s), path(u"link.wav"_s)));
    EXPECT_TRUE(QFileInfo(path(u"link.wav"_s)).isSymLink());
    EXPECT_EQ(content(u"real.wav"_s), "new");
    ASSERT_TRUE(moveAtomically(path(u"link.wav"_s), path(u"b.wav"_s)));
    EXPECT_FALSE(QFileInfo(path(u"b.wav"_s)).isSymLink());
    EXPECT_EQ(names(), (QStringList{u"b.wav"_s, u"real.wav"_s}));
}

} // namespace
} // namespace orlenta::base
