#include <limits>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "model/ProjectJson.h"
#include "model/SampleDocuments.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

void expectSortedWithoutNull(const rapidjson::Value &value) {
    EXPECT_FALSE(value.IsNull());
    if (value.IsArray())
        for (const auto &element : value.GetArray())
            expectSortedWithoutNull(element);
    if (!value.IsObject())
        return;
    std::string previous;
    for (const auto &member : value.GetObject()) {
        EXPECT_LT(previous, std::string(member.name.GetString()));
        previous = member.name.GetString();
        expectSortedWithoutNull(member.value);
    }
}

TEST(ProjectEncoding, AllKeysAreSortedAndNothingIsNull) {
    for (const Project &project : {fullProject(), Project::makeNew(u"New"_s, sampleMoment())}) {
        rapidjson::Document document;
        document.Parse(encodeProject(project).constData());
        ASSERT_FALSE(document.HasParseError());
        expectSortedWithoutNull(document);
    }
}

TEST(ProjectEncoding, ADocumentIsFormattedLikeThis) {
    Project project = Project::makeNew(u"a/b \"ü\"\\\u001f"_s, sampleMoment());
    project.projectId = ProjectId(sampleUuid(9));
    project.lines = {};
    project.tabs = {{TabId(QUuid(u"abcdefab-cdef-abcd-efab-cdefabcdef01"_s)),
                     u"T"_s,
                     {LineId(sampleUuid(1)), LineId(sampleUuid(2))}}};
    project.activeTabId.reset();
    EXPECT_EQ(encodeProject(project), R"({
  "audio_settings": {
    "bit_depth": 24,
    "format": "wav",
    "sample_rate": 48000
  },
  "created_at": "2024-05-31T12:34:56Z",
  "lines": [],
  "modified_at": "2024-05-31T12:34:56Z",
  "presets": [],
  "project_id": "00000000-0000-0000-0000-000000000009",
  "project_name": "a\/b \"ü\"\\\u001F",
  "pronunciations": [],
  "schema_version": 1,
  "selection": {
    "selected_line_ids": []
  },
  "tabs": [
    {
      "id": "ABCDEFAB-CDEF-ABCD-EFAB-CDEFABCDEF01",
      "line_ids": [
        "00000000-0000-0000-0000-000000000001",
        "00000000-0000-0000-0000-000000000002"
      ],
      "name": "T"
    }
  ],
  "voices": []
})");
}

TEST(ProjectEncoding, OlderKeysAreNotWrittenAgain) {
    const auto project = decodeProject(
        documentWith(R"(,"voices":[{"id":"00000000-0000-0000-0000-000000000001","color_stripe":"#010203"}],)"
                     R"("pronunciations":[{"word":"w","alias":"a","isEnabled":false}],"unknown":1)"),
        sampleMoment());
    ASSERT_TRUE(project);
    const QByteArray text = encodeProject(*project);
    EXPECT_TRUE(text.contains(R"("color_stripe_hex": "#010203")"));
    for (const char *key : {"\"color_stripe\"", "\"word\"", "\"alias\"", "\"isEnabled\"", "\"unknown\""})
        EXPECT_FALSE(text.contains(key)) << key;
}

TEST(ProjectEncoding, ValuesThatJsonCantHoldBecomeTheNearestThatItCan) {
    Project project = Project::makeNew(u"x"_s, sampleMoment() + std::chrono::years(9000));
    ProjectLine line = *project.linesInOrder().front();
    line.text = QString(QChar(0xD800)) + u"a"_s;
    line.sourceRecordings = {{RecordingId::create(), u"f"_s, sampleMoment(), std::numeric_limits<double>::quiet_NaN()},
                             {RecordingId::create(), u"f"_s, sampleMoment(), std::numeric_limits<double>::infinity()}};
    project.lines.insert(line);
    const auto read = decodeProject(encodeProject(project), sampleMoment());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->linesInOrder().front()->text, u"\uFFFDa"_s);
    EXPECT_EQ(read->linesInOrder().front()->sourceRecordings.first().durationSeconds, 0.0);
    EXPECT_TRUE(encodeProject(*read).contains(R"("created_at": "9999-12-31T23:59:59Z")"));
}

TEST(ProjectEncoding, NumbersSurviveAnyNumberOfSaves) {
    Project project = Project::makeNew(u"x"_s, sampleMoment());
    ProjectLine line = *project.linesInOrder().front();
    for (const double duration : {0.1 + 0.2, 1.0 / 3.0, 123456.78901234567, 5e-324, 1.7976931348623157e308, 2.0})
        line.sourceRecordings.append({RecordingId::create(), u"f"_s, sampleMoment(), duration});
    project.lines.insert(line);
    const auto read = decodeProject(encodeProject(project), sampleMoment());
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, project);
    EXPECT_EQ(encodeProject(*read), encodeProject(project));
}

} // namespace
} // namespace orlenta::model
