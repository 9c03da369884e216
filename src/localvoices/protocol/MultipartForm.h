#pragma once

#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

struct FormPart {
    QString name;
    /// Set for a file, even an unnamed one.
    std::optional<QString> fileName;
    QByteArray content;
};

/// A body of the type multipart/form-data (RFC 7578).
class MultipartForm final {
public:
    /// None when the content type isn't that one, or the body breaks its rules.
    [[nodiscard]] static std::optional<MultipartForm> parse(const QByteArray &contentType, const QByteArray &body);

    /// The first part of this name, or none.
    [[nodiscard]] const FormPart *findPart(const QString &name) const;
    /// Its content as text; none without the part.
    [[nodiscard]] std::optional<QString> text(const QString &name) const;

private:
    std::vector<FormPart> m_parts;
};

} // namespace orlenta::localvoices
