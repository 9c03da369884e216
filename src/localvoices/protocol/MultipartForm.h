#pragma once

#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"

namespace orlenta::localvoices {

struct FormPart {
    QString name;
    /// Set for files, even unnamed ones.
    std::optional<QString> fileName;
    QByteArray content;
};

/// Why a form was rejected.
enum class FormFault {
    /// Wrong content type, or a malformed body.
    Unreadable,
    /// More than `mostParts`.
    TooManyParts,
};

/// A multipart/form-data body (RFC 7578).
class MultipartForm final {
public:
    static constexpr std::size_t mostParts = 64;

    [[nodiscard]] static base::Result<MultipartForm, FormFault> parse(const QByteArray &contentType,
                                                                      const QByteArray &body);

    /// The first part with this name, or null.
    [[nodiscard]] const FormPart *findPart(const QString &name) const;
    /// The content of that part as text.
    [[nodiscard]] std::optional<QString> text(const QString &name) const;

private:
    std::vector<FormPart> m_parts;
};

} // namespace orlenta::localvoices
