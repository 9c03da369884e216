#include "base/LogFile.h"

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "base/LogCategories.h"

namespace orlenta::base {
namespace {

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(LogFile, KeepsMessagesWithTheirCategoryForTheUserAlone) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("state/orlenta.log"));
    {
        const LogFile file(path);
        qCInfo(base::log::audioDebug) << "a device came";
    }
    qCInfo(base::log::audioDebug) << "after the end";

    EXPECT_TRUE(contents(path).contains("TCCTrace: a device came\n"));
    EXPECT_FALSE(contents(path).contains("after the end"));
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST(LogFile, SetsAFullFileAsideAndKeepsOneOlder) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("orlenta.log"));
    {
        const LogFile file(path);
        const QString filler(LogFile::largestSize / 4, u'x');
        for (int i = 0; i < 10; ++i)
            qCInfo(base::log::audioDebug).noquote() << filler;
    }
    EXPECT_LE(contents(path).size(), LogFile::largestSize);
    EXPECT_GT(contents(path + QStringLiteral(".1")).size(), LogFile::largestSize);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

TEST(LogFile, AFolderThatCanNotBeMadeCostsOnlyTheLog) {
    const LogFile file(QStringLiteral("/proc/nowhere/orlenta.log"));
    qCInfo(base::log::audioDebug) << "nobody hears";
}

} // namespace
} // namespace orlenta::base
