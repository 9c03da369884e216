#include <gtest/gtest.h>

#include "model/CustomTagJson.h"
#include "model/LinePayload.h"
#include "model/SampleDocuments.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

TEST(CustomTagJson, TagsReadBackEqualAndMissingKeysHaveDefaults) {
    const QList<CustomTag> tags{{CustomTagId::create(), u"hüstelt / [x]"_s, u"Vocal"_s, false, true}};
    EXPECT_EQ(decodeCustomTags(encodeCustomTags(tags)), tags);
    EXPECT_EQ(decodeCustomTags(encodeCustomTags({})), QList<CustomTag>());
    const auto read = decodeCustomTags(R"([{},{"label":"x","isEnabled":false,"is_enabled":true}])");
    ASSERT_TRUE(read);
    CustomTag expected;
    expected.id = read->first().id;
    EXPECT_FALSE(expected.id.isNull());
    EXPECT_EQ(read->first(), expected);
    EXPECT_FALSE(read->last().isEnabled);
}

TEST(CustomTagJson, NoTwoTagsShareAnId) {
    const CustomTag tag{CustomTagId::create(), u"x"_s, u"Vocal"_s, false, true};
    const auto read = decodeCustomTags(encodeCustomTags({tag, tag}));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->first().id, tag.id);
    EXPECT_NE(read->last().id, tag.id);
}

TEST(CustomTagJson, AnythingElseIsRejected) {
    for (const QByteArray text : {"", "{}", "null", "[1]", R"([{"label":1}])", "[{}", R"([{"id":"x"}])"})
        EXPECT_FALSE(decodeCustomTags(text)) << text.toStdString();
}

TEST(LinePayload, LinesReadBackEqual) {
    const Project project = fullProject();
    const LinePayload payload{project.projectId, {*project.linesInOrder().at(1), *project.linesInOrder().at(0)}};
    EXPECT_EQ(decodeLinePayload(encodeLinePayload(payload)), payload);
}

TEST(LinePayload, AnythingElseIsRejected) {
    const QByteArray good = encodeLinePayload({ProjectId::create(), {ProjectLine::makeNew()}});
    EXPECT_TRUE(decodeLinePayload(good));
    EXPECT_FALSE(decodeLinePayload(QByteArray(good).replace("\"version\": 1", "\"version\": 2")));
    EXPECT_FALSE(decodeLinePayload(QByteArray(good).replace("\"notes\"", "\"n\"")));
    EXPECT_FALSE(decodeLinePayload("some text"));
}

} // namespace
} // namespace orlenta::model
