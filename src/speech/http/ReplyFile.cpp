#include "speech/http/ReplyFile.h"

namespace orlenta::speech {

namespace {

constexpr qsizetype headLimit = 512;

} // namespace

ReplyFile::ReplyFile(const QString &path, qint64 headerBytes)
    : m_owned(path), m_file(path), m_headerBytes(headerBytes) {}

base::Result<void, base::FileError> ReplyFile::begin() {
    m_size = 0;
    m_head.clear();
    m_file.close();
    // Unbuffered, so that the write that fills the disk is the one that fails.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return failure();
    return write(QByteArray(m_headerBytes, '\0'));
}

base::Result<void, base::FileError> ReplyFile::append(const QByteArray &bytes) {
    if (m_head.size() < headLimit)
        m_head += bytes.first(std::min(headLimit - m_head.size(), bytes.size()));
    m_size += bytes.size();
    return write(bytes);
}

base::Result<void, base::FileError> ReplyFile::finish(const QByteArray &header) {
    if (!m_file.seek(0))
        return failure();
    auto written = write(header);
    m_file.close();
    return written;
}

base::Failure<base::FileError> ReplyFile::failure() const {
    return base::fail(base::FileError::withReason(path(), m_file.errorString()));
}

base::Result<void, base::FileError> ReplyFile::write(const QByteArray &bytes) {
    if (m_file.write(bytes) != bytes.size())
        return failure();
    return {};
}

} // namespace orlenta::speech
