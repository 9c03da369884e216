#pragma once

#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "base/files/RegularFile.h"

namespace orlenta::base::test {

/// Gives each test its own folder.
class FileFolder : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QByteArray encodedPath(const QString &name) const { return QFile::encodeName(path(name)); }
    [[nodiscard]] QStringList names() const { return namesIn(m_folder.path()); }
    [[nodiscard]] static QStringList namesIn(const QString &folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                      QDir::Name);
    }
    void put(const QString &name, const QByteArray &data) const { putAt(path(name), data); }
    static void putAt(const QString &path, const QByteArray &data) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(data), data.size());
    }
    [[nodiscard]] QByteArray content(const QString &name) const { return contentAt(path(name)); }
    [[nodiscard]] static QByteArray contentAt(const QString &path) {
        auto data = readWholeFile(path);
        return data ? *data : QByteArray("unreadable");
    }
    [[nodiscard]] mode_t mode(const QString &name) const {
        struct stat status {};
        ::stat(encodedPath(name).constData(), &status);
        return status.st_mode & 07777;
    }

    QTemporaryDir m_folder;
};

} // namespace orlenta::base::test
