#include "tags/RenderedTagCategories.h"

#include <gtest/gtest.h>

#include "tags/CustomTagLookup.h"

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

TEST(RenderedTagCategories, AsksTheUsersTagsOnceAndBeforeTheVocabulary) {
    int lookups = 0;
    RenderedTagCategories categories([&](const QString &raw) -> std::optional<TagCategory> {
        ++lookups;
        return raw == u"[Whispers]"_s ? std::optional(TagCategory::Character) : std::nullopt;
    });
    EXPECT_EQ(categories.categoryForTag(u"[Whispers]"_s), TagCategory::Character);
    EXPECT_EQ(categories.categoryForTag(u"whispers"_s), TagCategory::Character);
    EXPECT_EQ(lookups, 1);
    EXPECT_EQ(categories.categoryForTag(u"sighs"_s), TagCategory::Vocal);
    EXPECT_EQ(categories.categoryForTag(u"[ ]"_s), std::nullopt);
    EXPECT_EQ(lookups, 2);
    EXPECT_EQ(categories.categoryForTag(u"unheard of"_s), std::nullopt);
    EXPECT_EQ(categories.categoryForTag(u"unheard of"_s), std::nullopt);
    EXPECT_EQ(lookups, 4) << "an unknown tag isn't remembered: its classification may arrive meanwhile";
}

TEST(RenderedTagCategories, RemembersWhatWasShown) {
    RenderedTagCategories categories;
    categories.recordTagInstance({model::LineId::create(), u"[ Odd  One ]"_s, QString(), TagCategory::Pacing});
    EXPECT_EQ(categories.categoryForTag(u"odd one"_s), TagCategory::Pacing);
    categories.recordTagInstance({model::LineId::create(), u"x"_s, u"odd one"_s, TagCategory::Vocal});
    EXPECT_EQ(categories.categoryForTag(u"odd one"_s), TagCategory::Vocal);
    categories.remove(u"odd one"_s);
    EXPECT_EQ(categories.categoryForTag(u"odd one"_s), std::nullopt);
}

TEST(TagInstance, IsIdentifiedByLineAndKey) {
    const model::LineId line(QUuid(u"{0a1b2c3d-0000-4000-8000-abcdefabcdef}"_s));
    const TagInstance instance{line, u"Sighs"_s, u"sighs"_s, TagCategory::Vocal};
    EXPECT_EQ(instance.identity(), u"0A1B2C3D-0000-4000-8000-ABCDEFABCDEF:sighs"_s);
}

TEST(CustomTagLookup, LetsTheFirstEnabledTagWithTheKeyDecide) {
    const auto first = model::CustomTagId::create();
    const QList<model::CustomTag> tags{
        {model::CustomTagId::create(), u"growl"_s, u"Vocal"_s, false, false},
        {first, u"Growl"_s, u"Pacing"_s, true, false},
        {model::CustomTagId::create(), u"[growl]"_s, u"Emotion"_s, true, false},
        {model::CustomTagId::create(), u"hiss"_s, u"no category"_s, true, false},
        {model::CustomTagId::create(), u"HISS"_s, u"Vocal"_s, true, false},
        {model::CustomTagId::create(), u"moan"_s, u"Vocal"_s, false, false},
        {model::CustomTagId::create(), QString(), u"Vocal"_s, true, false},
    };
    EXPECT_EQ(customCategory(u"[GROWL]"_s, tags), TagCategory::Pacing);
    EXPECT_EQ(customCategory(u"growl"_s, tags, first), TagCategory::Emotion);
    EXPECT_EQ(customCategory(u"hiss"_s, tags), std::nullopt);
    EXPECT_EQ(customCategory(u" "_s, tags), std::nullopt);
    EXPECT_TRUE(hasCustomTag(u"[Moan]"_s, tags));
    EXPECT_FALSE(hasCustomTag(u"[]x"_s, tags));
    EXPECT_FALSE(hasCustomTag(u""_s, tags));
}

} // namespace
} // namespace orlenta::tags
