#pragma once

#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include "base/FileError.h"
#include "base/Result.h"
#include "speech/http/OwnedFile.h"

namespace orlenta::speech {

/// The file that a long reply is written to while it arrives, so that its size doesn't matter to memory. It is made
/// with the first attempt that the service accepts, and deleted with the last owner. Room can be kept for a header that
/// is known only at the end. One thread at a time.
class ReplyFile final {
public:
    explicit ReplyFile(const QString &path, qint64 headerBytes = 0);

    [[nodiscard]] const QString &path() const { return m_owned.path(); }
    /// Bytes of the reply, without the header.
    [[nodiscard]] qint64 size() const { return m_size; }
    /// The first bytes of the reply, 512 at most.
    [[nodiscard]] const QByteArray &head() const { return m_head; }

    /// Empties the file for an attempt.
    base::Result<void, base::FileError> begin();
    base::Result<void, base::FileError> append(const QByteArray &bytes);
    /// Writes the header, which has the size that was kept for it, and closes the file.
    base::Result<void, base::FileError> finish(const QByteArray &header = {});
    /// The file stays when the last owner goes.
    void keep() { m_owned.keep(); }

private:
    [[nodiscard]] base::Failure<base::FileError> failure() const;
    base::Result<void, base::FileError> write(const QByteArray &bytes);

    OwnedFile m_owned;
    QFile m_file;
    qint64 m_headerBytes;
    qint64 m_size = 0;
    QByteArray m_head;
};

using ReplyFilePtr = std::shared_ptr<ReplyFile>;

} // namespace orlenta::speech
