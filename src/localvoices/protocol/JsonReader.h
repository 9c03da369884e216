#pragma once

#include <optional>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Presence { Required, Optional };

/// Reads the fields of a request's JSON object and collects schema violations. Null counts as absent for optional
/// fields. Unknown fields are ignored, as in the service.
class JsonReader final {
public:
    /// Parses a JSON text that must be an object; none if it isn't.
    [[nodiscard]] static std::optional<QJsonObject> parseObject(const QByteArray &json);

    /// Appends violations to `faults`. `location` is the path of the object within the request.
    JsonReader(QJsonObject object, QJsonArray location, QJsonArray &faults);

    [[nodiscard]] std::optional<QString> text(const QString &key, Presence presence = Presence::Optional);
    [[nodiscard]] std::optional<double> number(const QString &key, double least, double most);
    [[nodiscard]] std::optional<qint64> integer(const QString &key, qint64 least, qint64 most);
    [[nodiscard]] std::optional<QJsonArray> array(const QString &key, qsizetype longest);
    [[nodiscard]] std::optional<QJsonObject> object(const QString &key);
    void requireBool(const QString &key);
    void requireOneOf(const QString &key, const QStringList &values);

    void addFault(const QString &key, const QString &message, const QString &type);

private:
    [[nodiscard]] bool isAbsent(const QString &key) const;

    QJsonObject m_object;
    QJsonArray m_location;
    QJsonArray &m_faults;
};

} // namespace orlenta::localvoices
