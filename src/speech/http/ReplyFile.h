#pragma once

#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include "base/files/FileError.h"
#include "base/Result.h"
#include "speech/http/OwnedFile.h"

namespace orlenta::speech {

/// A file that a long reply is written to as it arrives, so that memory use doesn't depend on its size. It is created
/// once the service accepts the request, and deleted with the last owner. Space for a header can be reserved, because
/// the header's content is known only at the end. One thread at a time.
class ReplyFile final {
public:
    explicit ReplyFile(const QString &path, qint64 headerBytes = 0);

    [[nodiscard]] const QString &path() const { return m_owned.path(); }
    /// Bytes of the reply, without the header.
    [[nodiscard]] qint64 size() const { return m_size; }
    /// The first bytes of the reply, at most 512.
    [[nodiscard]] const QByteArray &head() const { return m_head; }

    /// Creates or empties the file for a new attempt.
    base::Result<void, base::FileError> begin();
    base::Result<void, base::FileError> append(const QByteArray &bytes);
    /// Writes the header, which must have the reserved size, and closes the file.
    base::Result<void, base::FileError> finish(const QByteArray &header = {});
    /// Leaves the file in place when the last owner is destroyed.
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
