#include "localvoices/protocol/JsonReader.h"

#include <utility>

#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

#include "localvoices/protocol/Refusal.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

std::optional<QJsonObject> JsonReader::parseObject(const QByteArray &json) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

JsonReader::JsonReader(QJsonObject object, QJsonArray location, QJsonArray &faults)
    : m_object(std::move(object)), m_location(std::move(location)), m_faults(faults) {}

bool JsonReader::isAbsent(const QString &key) const {
    const QJsonValue value = m_object.value(key);
    return value.isUndefined() || value.isNull();
}

void JsonReader::addFault(const QString &key, const QString &message, const QString &type) {
    QJsonArray location = m_location;
    location.append(key);
    m_faults.append(validationFault(location, message, type));
}

std::optional<QString> JsonReader::text(const QString &key, Presence presence) {
    if (isAbsent(key)) {
        if (presence == Presence::Required && !m_object.contains(key))
            addFault(key, u"Field required"_s, u"missing"_s);
        else if (presence == Presence::Required)
            addFault(key, u"Input should be a valid string"_s, u"string_type"_s);
        return std::nullopt;
    }
    const QJsonValue value = m_object.value(key);
    if (value.isString())
        return value.toString();
    addFault(key, u"Input should be a valid string"_s, u"string_type"_s);
    return std::nullopt;
}

std::optional<double> JsonReader::number(const QString &key, double least, double most) {
    if (isAbsent(key))
        return std::nullopt;
    const QJsonValue value = m_object.value(key);
    if (!value.isDouble())
        addFault(key, u"Input should be a valid number"_s, u"float_type"_s);
    else if (value.toDouble() < least)
        addFault(key, u"Input should be greater than or equal to %1"_s.arg(least), u"greater_than_equal"_s);
    else if (value.toDouble() > most)
        addFault(key, u"Input should be less than or equal to %1"_s.arg(most), u"less_than_equal"_s);
    else
        return value.toDouble();
    return std::nullopt;
}

std::optional<qint64> JsonReader::integer(const QString &key, qint64 least, qint64 most) {
    const std::optional<double> value = number(key, static_cast<double>(least), static_cast<double>(most));
    if (!value)
        return std::nullopt;
    const auto whole = static_cast<qint64>(*value);
    if (static_cast<double>(whole) == *value)
        return whole;
    addFault(key, u"Input should be a valid integer"_s, u"int_from_float"_s);
    return std::nullopt;
}

std::optional<QJsonArray> JsonReader::array(const QString &key, qsizetype longest) {
    if (isAbsent(key))
        return std::nullopt;
    const QJsonValue value = m_object.value(key);
    if (!value.isArray())
        addFault(key, u"Input should be a valid list"_s, u"list_type"_s);
    else if (value.toArray().size() > longest)
        addFault(key, u"List should have at most %1 items after validation"_s.arg(longest), u"too_long"_s);
    else
        return value.toArray();
    return std::nullopt;
}

std::optional<QJsonObject> JsonReader::object(const QString &key) {
    if (isAbsent(key))
        return std::nullopt;
    if (m_object.value(key).isObject())
        return m_object.value(key).toObject();
    addFault(key, u"Input should be a valid dictionary"_s, u"dict_type"_s);
    return std::nullopt;
}

void JsonReader::requireBool(const QString &key) {
    if (!isAbsent(key) && !m_object.value(key).isBool())
        addFault(key, u"Input should be a valid boolean"_s, u"bool_type"_s);
}

void JsonReader::requireOneOf(const QString &key, const QStringList &values) {
    if (!isAbsent(key) && !values.contains(m_object.value(key).toString()))
        addFault(key, u"Input should be one of '%1'"_s.arg(values.join(u"', '"_s)), u"literal_error"_s);
}

} // namespace orlenta::localvoices
