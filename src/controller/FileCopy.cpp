#include "controller/FileCopy.h"

#include <cerrno>
#include <cstdio>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/AtomicFile.h"

namespace orlenta::controller {
namespace {

constexpr qint64 copyBlockBytes = 1 << 20;

base::Result<void, base::FileError> copyBytes(QFile &input, QFile &output) {
    while (!input.atEnd()) {
        const QByteArray block = input.read(copyBlockBytes);
        if (block.isEmpty())
            return base::fail(base::FileError::withReason(input.fileName(), input.errorString()));
        if (output.write(block) != block.size())
            return base::fail(base::FileError::withReason(output.fileName(), output.errorString()));
    }
    if (!output.flush())
        return base::fail(base::FileError::withReason(output.fileName(), output.errorString()));
    return {};
}

base::Result<void, base::FileError> copyToTemporary(const QString &source, const QString &temporary) {
    QFile input(source);
    if (!input.open(QIODevice::ReadOnly))
        return base::fail(base::FileError::withReason(source, input.errorString()));
    QFile output(temporary);
    // Unbuffered: each block's failure shows at its own write, however full the disk gets.
    if (!output.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return base::fail(base::FileError::withReason(temporary, output.errorString()));
    if (auto copied = copyBytes(input, output); !copied)
        return copied;
    output.close();
    if (QFileInfo(temporary).size() != input.size())
        return base::fail(
            base::FileError::withReason(temporary, QStringLiteral("The file could not be written whole")));
    return base::syncToDisk(temporary);
}

base::Result<void, base::FileError> renameOnto(const QString &temporary, const QString &destination) {
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(destination).constData()) != 0)
        return base::fail(base::FileError::fromErrno(destination, errno));
    return base::syncToDisk(destination);
}

} // namespace

base::Result<void, base::FileError> copyFile(const QString &source, const QString &destination) {
    const QFileInfo target(destination);
    const QString temporary = target.absolutePath() + QStringLiteral("/.") + target.fileName() + QStringLiteral(".tmp");
    QFile::remove(temporary);
    auto result = copyToTemporary(source, temporary);
    if (result)
        result = renameOnto(temporary, destination);
    if (!result)
        QFile::remove(temporary);
    return result;
}

} // namespace orlenta::controller
