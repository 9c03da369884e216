#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::localvoices::test {

/// What is wrong with a JSON text beside the service's published schema of this name; empty when nothing is. A field
/// that the schema doesn't name is wrong too.
[[nodiscard]] QStringList schemaFaults(const QString &schemaName, const QByteArray &json);

} // namespace orlenta::localvoices::test
