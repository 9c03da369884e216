#include "localvoices/JsonSchema.h"

#include <cmath>

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace orlenta::localvoices::test {

using namespace Qt::StringLiterals;

namespace {

QJsonObject publishedSchemas() {
    QFile file(QStringLiteral(ORLENTA_TEST_DATA "/service/answers.json"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll())
        .object()
        .value(u"components"_s)
        .toObject()
        .value(u"schemas"_s)
        .toObject();
}

bool isOfType(const QJsonValue &value, const QString &type) {
    if (type == u"object"_s)
        return value.isObject();
    if (type == u"array"_s)
        return value.isArray();
    if (type == u"string"_s)
        return value.isString();
    if (type == u"boolean"_s)
        return value.isBool();
    if (type == u"null"_s)
        return value.isNull();
    if (type == u"integer"_s)
        return value.isDouble() && std::floor(value.toDouble()) == value.toDouble();
    return type == u"number"_s && value.isDouble();
}

class SchemaCheck final {
public:
    QStringList faults;

    void check(const QJsonObject &schema, const QJsonValue &value, const QString &where) {
        if (schema.contains(u"$ref"_s)) {
            const QString name = schema.value(u"$ref"_s).toString().section(u'/', -1);
            check(m_schemas.value(name).toObject(), value, where);
            return;
        }
        for (const QString &word : {u"anyOf"_s, u"oneOf"_s})
            if (schema.contains(word) && !fitsOneOf(schema.value(word).toArray(), value))
                faults << where + u": fits none of its forms"_s;
        checkType(schema, value, where);
        if (schema.contains(u"enum"_s) && !schema.value(u"enum"_s).toArray().contains(value))
            faults << where + u": not one of its values"_s;
        if (value.isObject())
            checkFields(schema, value.toObject(), where);
        if (value.isArray())
            for (const QJsonValue &item : value.toArray())
                check(schema.value(u"items"_s).toObject(), item, where + u"[]"_s);
    }

private:
    static bool fitsOneOf(const QJsonArray &forms, const QJsonValue &value) {
        for (const QJsonValue &form : forms) {
            SchemaCheck attempt;
            attempt.check(form.toObject(), value, QString());
            if (attempt.faults.isEmpty())
                return true;
        }
        return false;
    }

    void checkType(const QJsonObject &schema, const QJsonValue &value, const QString &where) {
        const QJsonValue type = schema.value(u"type"_s);
        const QJsonArray types = type.isArray() ? type.toArray() : type.isString() ? QJsonArray{type} : QJsonArray();
        bool fits = types.isEmpty();
        for (const QJsonValue &each : types)
            fits = fits || isOfType(value, each.toString());
        if (!fits)
            faults << where + u": of another type"_s;
    }

    void checkFields(const QJsonObject &schema, const QJsonObject &object, const QString &where) {
        for (const QJsonValue &key : schema.value(u"required"_s).toArray())
            if (!object.contains(key.toString()))
                faults << where + u'.' + key.toString() + u": missing"_s;
        const QJsonObject properties = schema.value(u"properties"_s).toObject();
        for (auto field = object.begin(); field != object.end(); ++field) {
            const QString place = where + u'.' + field.key();
            if (properties.contains(field.key()))
                check(properties.value(field.key()).toObject(), field.value(), place);
            else if (schema.value(u"additionalProperties"_s).isObject())
                check(schema.value(u"additionalProperties"_s).toObject(), field.value(), place);
            else if (!properties.isEmpty())
                faults << place + u": unknown"_s;
        }
    }

    QJsonObject m_schemas = publishedSchemas();
};

} // namespace

QStringList schemaFaults(const QString &schemaName, const QByteArray &json) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return {error.errorString()};
    const QJsonObject schema = publishedSchemas().value(schemaName).toObject();
    if (schema.isEmpty())
        return {u"There is no schema "_s + schemaName};
    SchemaCheck check;
    check.check(schema, document.object(), schemaName);
    return check.faults;
}

} // namespace orlenta::localvoices::test
