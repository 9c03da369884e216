#include "tags/TagVocabulary.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>

#include "tags/TagParser.h"

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

QString writtenFile(const QTemporaryDir &folder, const QByteArray &content) {
    const QString path = folder.filePath(u"canonical-tags.json"_s);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
    return path;
}

TEST(TagVocabulary, ShipsAVocabularyInNormalisedForm) {
    const auto &entries = canonicalTagEntries();
    EXPECT_GT(entries.size(), fallbackTagEntries().size()) << "the shipped file isn't in use";
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        EXPECT_EQ(normalizedTagKey(entry.key()), entry.key());
        EXPECT_NE(entry.value(), TagCategory::Stress);
    }
    for (auto entry = fallbackTagEntries().begin(); entry != fallbackTagEntries().end(); ++entry)
        EXPECT_EQ(entries.value(entry.key(), TagCategory::Stress), entry.value()) << entry.key().toStdString();
    EXPECT_EQ(canonicalCategory(u"[ WHISPERS ]"_s), TagCategory::Vocal);
    EXPECT_EQ(canonicalCategory(u"[no such direction]"_s), std::nullopt);
    EXPECT_EQ(canonicalCategory(u"[ ]"_s), std::nullopt);
}

TEST(TagVocabulary, FallsBackWhenTheFileCannotBeUsed) {
    const QTemporaryDir folder;
    const QByteArray unusable[] = {
        "",
        "{",
        "[]",
        R"({"version": 2, "entries": {"x": "Emotion"}})",
        R"({"version": "1", "entries": {"x": "Emotion"}})",
        R"({"version": 1.5, "entries": {"x": "Emotion"}})",
        R"({"version": 1})",
        R"({"version": 1, "entries": []})",
        R"({"version": 1, "entries": {"x": "emotion"}})",
        R"({"version": 1, "entries": {"x": 4}})",
        R"({"entries": {"x": "Emotion"}})",
    };
    EXPECT_EQ(fallbackTagEntries().size(), 18);
    for (const QByteArray &content : unusable)
        EXPECT_EQ(readCanonicalTagEntries({writtenFile(folder, content)}), fallbackTagEntries()) << content.constData();
    EXPECT_EQ(readCanonicalTagEntries({folder.filePath(u"missing.json"_s)}), fallbackTagEntries());
    EXPECT_EQ(readCanonicalTagEntries({folder.path()}), fallbackTagEntries()) << "a folder in the file's place";
}

TEST(TagVocabulary, ReadsTheFirstFileThatExists) {
    const QTemporaryDir folder;
    const QString path = writtenFile(folder, R"({"version": 1, "entries": {"growls low": "Vocal"}})");
    const QHash<QString, TagCategory> expected{{u"growls low"_s, TagCategory::Vocal}};
    EXPECT_EQ(readCanonicalTagEntries({folder.filePath(u"missing"_s), path}), expected);
    EXPECT_TRUE(readCanonicalTagEntries({writtenFile(folder, R"({"version": 1, "entries": {}})")}).isEmpty());
}

TEST(TagVocabulary, FillsPaletteRowsWithBuiltInThenTheUsersTags) {
    const auto customTag = [](const QString &label, const QString &category, bool isEnabled) {
        return model::CustomTag{model::CustomTagId::create(), label, category, isEnabled, false};
    };
    const QList<model::CustomTag> customTags{
        customTag(u"Growls"_s, u"Pacing"_s, true), customTag(u"off"_s, u"Pacing"_s, false),
        customTag(QString(), u"Pacing"_s, true),   customTag(u"odd"_s, u"pacing"_s, true),
        customTag(u"sly"_s, u"Character"_s, true),
    };
    QStringList inserted;
    for (const TagItem &item : tagItems(TagCategory::Pacing, customTags))
        inserted.append(item.insertText);
    EXPECT_EQ(inserted,
              (QStringList{u"..."_s, u"\u2014"_s, u"[breathes]"_s, u"[slows down]"_s, u"[rushed]"_s, u"[Growls]"_s}));
    EXPECT_TRUE(tagItems(TagCategory::Stress, {}).isEmpty());

    QSet<TagItemId> ids;
    for (const TagItem &item : builtInTagItems())
        ids.insert(item.id);
    EXPECT_EQ(ids.size(), 19);
}

TEST(TagVocabulary, DecodesCategoriesByTheirExactWord) {
    EXPECT_EQ(tagCategoryFromRawValue(u"STRESS"), TagCategory::Stress);
    EXPECT_EQ(tagCategoryFromRawValue(u"Character"), TagCategory::Character);
    for (const QString &word : {u"Stress"_s, u"emotion"_s, u"Emotion "_s, QString()})
        EXPECT_EQ(tagCategoryFromRawValue(word), std::nullopt) << word.toStdString();
}

} // namespace
} // namespace orlenta::tags
