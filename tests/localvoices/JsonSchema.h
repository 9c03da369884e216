#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::localvoices::test {

/// Validates a JSON text against the named schema that the service publishes and returns what is wrong, including
/// fields that the schema doesn't list.
[[nodiscard]] QStringList schemaFaults(const QString &schemaName, const QByteArray &json);

} // namespace orlenta::localvoices::test
