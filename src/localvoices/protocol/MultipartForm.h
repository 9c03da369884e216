#pragma once

#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"

namespace orlenta::localvoices {

struct FormPart {
    QString name;
    /// Set for a file, even an unnamed one.
    std::optional<QString> fileName;
    QByteArray content;
};

/// Why there is no form.
enum class FormFault {
    /// The content type isn't a form's, or the body breaks its rules.
    Unreadable,
    /// It holds more parts than any request needs.
    TooManyParts,
};

/// A body of the type multipart/form-data (RFC 7578).
class MultipartForm final {
public:
    static constexpr std::size_t mostParts = 64;

    [[nodiscard]] static base::Result<MultipartForm, FormFault> parse(const QByteArray &contentType,
                                                                      const QByteArray &body);

    /// The first part of this name, or none.
    [[nodiscard]] const FormPart *findPart(const QString &name) const;
    /// Its content as text; none without the part.
    [[nodiscard]] std::optional<QString> text(const QString &name) const;

private:
    std::vector<FormPart> m_parts;
};

} // namespace orlenta::localvoices
