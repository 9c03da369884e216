#include "localvoices/lexicon/DictionaryShelf.h"

#include <utility>

#include <QtCore/QDateTime>
#include <QtCore/QUuid>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostDictionaries = 256;

QString newDictionaryId() {
    return QUuid::createUuid().toString(QUuid::Id128).left(20);
}

} // namespace

QJsonObject DictionaryShelf::add(const QString &name, const std::optional<QString> &description,
                                 std::vector<PronunciationRule> rules) {
    const QString id = newDictionaryId();
    const QString versionId = newDictionaryId();
    const auto count = static_cast<qint64>(rules.size());
    m_dictionaries.emplace(id, Dictionary{versionId, std::move(rules)});
    m_order << id;
    if (m_order.size() > mostDictionaries)
        m_dictionaries.erase(m_order.takeFirst());
    return {
        {u"id"_s, id},
        {u"name"_s, name},
        {u"created_by"_s, u"local"_s},
        {u"creation_time_unix"_s, QDateTime::currentSecsSinceEpoch()},
        {u"version_id"_s, versionId},
        {u"version_rules_num"_s, count},
        {u"description"_s, description ? QJsonValue(*description) : QJsonValue(QJsonValue::Null)},
        {u"permission_on_resource"_s, u"admin"_s},
    };
}

const std::vector<PronunciationRule> *DictionaryShelf::find(const QString &id,
                                                            const std::optional<QString> &versionId) const {
    const auto found = m_dictionaries.find(id);
    if (found == m_dictionaries.end() || (versionId && *versionId != found->second.versionId))
        return nullptr;
    return &found->second.rules;
}

} // namespace orlenta::localvoices
