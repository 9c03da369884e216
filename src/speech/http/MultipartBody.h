#pragma once

#include <QtCore/QByteArray>

namespace orlenta::speech {

/// A multipart form (RFC 7578). Parts keep the order in which they were added; each form has its own boundary.
class MultipartBody final {
public:
    MultipartBody();

    void addField(const char *name, const QByteArray &value);
    void addFile(const char *name, const char *fileName, const char *contentType, const QByteArray &bytes);

    /// "multipart/form-data; boundary=" and the boundary.
    [[nodiscard]] QByteArray contentType() const;
    /// All parts and the closing line.
    [[nodiscard]] QByteArray bytes() const;

private:
    QByteArray m_boundary;
    QByteArray m_parts;
};

} // namespace orlenta::speech
