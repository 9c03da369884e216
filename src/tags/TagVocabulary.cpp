#include "tags/TagVocabulary.h"

#include <cmath>
#include <limits>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "tags/TagParser.h"

// The linker drops a static library's resources unless their initialiser is called; the macro must be used outside any
// namespace.
static void initializeTagResources() {
    Q_INIT_RESOURCE(tags);
}

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

constexpr int canonicalTagVersion = 1;

TagItem makeTagItem(const QString &label, const QString &insertText, TagCategory category) {
    return {TagItemId::create(), label, insertText, category};
}

std::optional<int> integerValue(const QJsonValue &value) {
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!value.isDouble() || std::trunc(number) != number || std::abs(number) > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(number);
}

} // namespace

const QList<TagItem> &builtInTagItems() {
    static const QList<TagItem> items{
        makeTagItem(u"excited"_s, u"[excited]"_s, TagCategory::Emotion),
        makeTagItem(u"sad"_s, u"[sad]"_s, TagCategory::Emotion),
        makeTagItem(u"angry"_s, u"[angry]"_s, TagCategory::Emotion),
        makeTagItem(u"warm"_s, u"[warm]"_s, TagCategory::Emotion),
        makeTagItem(u"fearful"_s, u"[fearful]"_s, TagCategory::Emotion),
        makeTagItem(u"confident"_s, u"[confident]"_s, TagCategory::Emotion),
        makeTagItem(u"whispers"_s, u"[whispers]"_s, TagCategory::Vocal),
        makeTagItem(u"sighs"_s, u"[sighs]"_s, TagCategory::Vocal),
        makeTagItem(u"laughs"_s, u"[laughs]"_s, TagCategory::Vocal),
        makeTagItem(u"crying"_s, u"[crying]"_s, TagCategory::Vocal),
        makeTagItem(u"shouting"_s, u"[shouting]"_s, TagCategory::Vocal),
        makeTagItem(u"pause ..."_s, u"..."_s, TagCategory::Pacing),
        makeTagItem(u"long pause \u2014"_s, u"\u2014"_s, TagCategory::Pacing),
        makeTagItem(u"breathes"_s, u"[breathes]"_s, TagCategory::Pacing),
        makeTagItem(u"slows down"_s, u"[slows down]"_s, TagCategory::Pacing),
        makeTagItem(u"rushed"_s, u"[rushed]"_s, TagCategory::Pacing),
        makeTagItem(u"sarcastically"_s, u"[sarcastically]"_s, TagCategory::Character),
        makeTagItem(u"deadpan"_s, u"[deadpan]"_s, TagCategory::Character),
        makeTagItem(u"accent"_s, u"[accent]"_s, TagCategory::Character),
    };
    return items;
}

QList<TagItem> tagItems(TagCategory category, const QList<model::CustomTag> &customTags) {
    QList<TagItem> row;
    for (const TagItem &item : builtInTagItems()) {
        if (item.category == category)
            row.append(item);
    }
    for (const model::CustomTag &tag : customTags) {
        if (tag.isEnabled && tagCategoryFromRawValue(tag.category) == category && !tag.label.isEmpty())
            row.append(makeTagItem(tag.label, u'[' + tag.label + u']', category));
    }
    return row;
}

std::optional<TagCategory> canonicalCategory(const QString &raw) {
    const QHash<QString, TagCategory> &entries = canonicalTagEntries();
    const auto found = entries.constFind(normalizedTagKey(raw));
    return found == entries.cend() ? std::nullopt : std::optional(*found);
}

const QHash<QString, TagCategory> &canonicalTagEntries() {
    static const QHash<QString, TagCategory> entries = [] {
        initializeTagResources();
        return readCanonicalTagEntries({u":/tags/canonical-tags.json"_s});
    }();
    return entries;
}

const QHash<QString, TagCategory> &fallbackTagEntries() {
    static const QHash<QString, TagCategory> entries{
        {u"whispers"_s, TagCategory::Vocal},    {u"sighs"_s, TagCategory::Vocal},
        {u"laughs"_s, TagCategory::Vocal},      {u"crying"_s, TagCategory::Vocal},
        {u"shouting"_s, TagCategory::Vocal},    {u"excited"_s, TagCategory::Emotion},
        {u"sad"_s, TagCategory::Emotion},       {u"angry"_s, TagCategory::Emotion},
        {u"warm"_s, TagCategory::Emotion},      {u"fearful"_s, TagCategory::Emotion},
        {u"confident"_s, TagCategory::Emotion}, {u"pause"_s, TagCategory::Pacing},
        {u"breathes"_s, TagCategory::Pacing},   {u"slows down"_s, TagCategory::Pacing},
        {u"rushed"_s, TagCategory::Pacing},     {u"sarcastically"_s, TagCategory::Character},
        {u"deadpan"_s, TagCategory::Character}, {u"accent"_s, TagCategory::Character},
    };
    return entries;
}

QHash<QString, TagCategory> readCanonicalTagEntries(const QStringList &candidatePaths) {
    for (const QString &path : candidatePaths) {
        if (!QFileInfo::exists(path))
            continue;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return fallbackTagEntries();
        const auto payload = decodeCanonicalTagPayload(file.readAll());
        if (!payload || payload->version != canonicalTagVersion)
            return fallbackTagEntries();
        return payload->entries;
    }
    return fallbackTagEntries();
}

std::optional<TagItem::CanonicalTagPayload> decodeCanonicalTagPayload(const QByteArray &json) {
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    const std::optional<int> version = integerValue(root.value("version"_L1));
    const QJsonValue entries = root.value("entries"_L1);
    if (!version || !entries.isObject())
        return std::nullopt;
    TagItem::CanonicalTagPayload payload{*version, {}};
    const QJsonObject table = entries.toObject();
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        const auto category = tagCategoryFromRawValue(entry.value().toString());
        if (!category)
            return std::nullopt;
        payload.entries.insert(entry.key(), *category);
    }
    return payload;
}

} // namespace orlenta::tags
