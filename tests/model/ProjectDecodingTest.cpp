#include <random>

#include <gtest/gtest.h>

#include "model/ProjectJson.h"
#include "model/SampleDocuments.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

const base::Timestamp readingTime = sampleMoment() + std::chrono::hours(1);

Project decoded(const QByteArray &text) {
    auto project = decodeProject(text, readingTime);
    if (!project) {
        const auto *broken = std::get_if<DecodingError>(&project.error());
        ADD_FAILURE() << text.toStdString() << "\n" << (broken ? broken->detail.toStdString() : "newer");
        return {};
    }
    return std::move(project).value();
}

ProjectLine onlyLine(const Project &project) {
    const auto lines = project.linesInOrder();
    EXPECT_EQ(lines.size(), 1U);
    return lines.empty() ? ProjectLine() : *lines.front();
}

// The decoding error; empty if the document is valid.
QString problemOf(const QByteArray &text) {
    const auto project = decodeProject(text, readingTime);
    if (project)
        return {};
    const auto *broken = std::get_if<DecodingError>(&project.error());
    return broken != nullptr ? broken->detail : u"newer %1"_s.arg(std::get<NewerSchema>(project.error()).version);
}

QByteArray pronunciations(const QByteArray &entries) {
    return documentWith(",\"pronunciations\":[" + entries + "]");
}

const QByteArray takeText =
    R"({"id":"00000000-0000-0000-0000-000000000007","filename":"a.wav",)"
    R"("generated_at":"2024-05-31T12:34:56Z","voice_id":"00000000-0000-0000-0000-000000000001",)"
    R"("character_count":3,"settings_snapshot":{"stability":0.5,"similarity_boost":0.5,)"
    R"("style":0,"speed":1,"model":"v2","mode":"Natural","direction_mode":"text"}})";

QByteArray withTake(const QByteArray &take) {
    return documentWith(",\"lines\":[" + lineText(1, 0).replace("\"takes\":[]", "\"takes\":[" + take + "]") + "]");
}

TEST(ProjectDecoding, WhatWasWrittenReadsBackEqual) {
    const Project project = fullProject();
    EXPECT_EQ(decoded(encodeProject(project)), project);
    EXPECT_EQ(decoded("\xEF\xBB\xBF" + encodeProject(project)), project);
}

TEST(ProjectDecoding, MissingListsAndSelectionHaveDefaults) {
    const Project project = decoded(documentWith({}));
    EXPECT_TRUE(project.lines.isEmpty());
    EXPECT_TRUE(project.voices.isEmpty());
    EXPECT_EQ(project.selection, SelectionState());
    ASSERT_EQ(project.tabs.size(), 1);
    EXPECT_EQ(project.tabs.first().name, u"Script 1"_s);
    EXPECT_EQ(project.activeTabId, project.tabs.first().id);
}

TEST(ProjectDecoding, WithoutTabsOneHoldsAllLinesByOrder) {
    const Project project = decoded(documentWith(",\"lines\":[" + lineText(1, 2) + "," + lineText(2, 0) + "," +
                                                 lineText(3, 1) + "," + lineText(4, 1) + "]"));
    ASSERT_EQ(project.tabs.size(), 1);
    EXPECT_EQ(project.tabs.first().lineIds,
              (LineIdList{LineId(sampleUuid(2)), LineId(sampleUuid(3)), LineId(sampleUuid(4)), LineId(sampleUuid(1))}));
    EXPECT_EQ(project.activeTabId, project.tabs.first().id);
}

TEST(ProjectDecoding, RepeatedIdsAreRenewedAfterTheFirst) {
    const QByteArray tab = R"({"id":"00000000-0000-0000-0000-000000000008","name":"T","line_ids":[)"
                           R"("00000000-0000-0000-0000-000000000001"]})";
    const Project project = decoded(
        documentWith(",\"lines\":[" + lineText(1, 0) + "," + lineText(1, 1) + "],\"tabs\":[" + tab + "," + tab + "]"));
    ASSERT_EQ(project.lines.size(), 2);
    ASSERT_EQ(project.tabs.size(), 2);
    EXPECT_EQ(project.tabs.at(0).id, TabId(sampleUuid(8)));
    EXPECT_NE(project.tabs.at(1).id, TabId(sampleUuid(8)));
    // The line stays in its first tab; the renewed line is in no tab, so it goes to the first.
    ASSERT_EQ(project.tabs.at(0).lineIds.size(), 2);
    EXPECT_EQ(project.tabs.at(0).lineIds.first(), LineId(sampleUuid(1)));
    EXPECT_TRUE(project.lines.contains(project.tabs.at(0).lineIds.last()));
    EXPECT_TRUE(project.tabs.at(1).lineIds.isEmpty());
}

TEST(ProjectDecoding, NoTwoRecordsOfAListShareAnId) {
    const auto threeTimes = [](const QByteArray &record) { return "[" + record + "," + record + "," + record + "]"; };
    const auto expectUnique = [](const auto &records) {
        ASSERT_EQ(records.size(), 3);
        EXPECT_EQ(records.at(0).id.uuid(), sampleUuid(7));
        EXPECT_NE(records.at(1).id, records.at(0).id);
        EXPECT_NE(records.at(2).id, records.at(0).id);
        EXPECT_NE(records.at(2).id, records.at(1).id);
    };
    const QByteArray id = R"({"id":"00000000-0000-0000-0000-000000000007")";
    const QByteArray preset = id + presetText().mid(presetText().indexOf(','));
    const Project project =
        decoded(documentWith(",\"voices\":" + threeTimes(id + "}") + ",\"presets\":" + threeTimes(preset) +
                             ",\"pronunciations\":" + threeTimes(id + "}")));
    expectUnique(project.voices);
    expectUnique(project.presets);
    expectUnique(project.pronunciations);
    expectUnique(onlyLine(decoded(withTake(takeText + "," + takeText + "," + takeText))).takes);
    const QByteArray recording =
        id + R"(,"filename":"r.wav","recorded_at":"2024-05-31T12:34:56Z","duration_seconds":1})";
    const QByteArray line =
        lineText(1, 0).replace("\"source_recordings\":[]", "\"source_recordings\":" + threeTimes(recording));
    expectUnique(onlyLine(decoded(documentWith(",\"lines\":[" + line + "]"))).sourceRecordings);
}

TEST(ProjectDecoding, ATextKeepsItsLeadingByteOrderMarks) {
    Project project = fullProject();
    const QString marked = u"\uFEFF\uFEFFText\uFEFF"_s;
    project.lines.update(project.tabs.first().lineIds.first(),
                         [&](ProjectLine &line) { line.text = line.settings->model = marked; });
    project.voices.first().castName = marked;
    EXPECT_EQ(decoded(encodeProject(project)), project);
}

TEST(ProjectDecoding, AnUnknownActiveTabIsKept) {
    const Project project = decoded(documentWith(R"(,"active_tab_id":"00000000-0000-0000-0000-000000000077")"));
    EXPECT_EQ(project.activeTabId, TabId(sampleUuid(77)));
}

TEST(ProjectDecoding, VoicesFillInWhatIsMissing) {
    struct Case {
        QByteArray members;
        QString displayName;
        QString castName;
        QString color;
    };
    const Case cases[] = {
        {"", u"Voice"_s, u"Voice"_s, u"#7F78DE"_s},
        {R"(,"display_name":"Anna")", u"Anna"_s, u"Anna"_s, u"#7F78DE"_s},
        {R"(,"cast_name":"C","display_name":null)", u"Voice"_s, u"C"_s, u"#7F78DE"_s},
        {R"(,"display_name":"","color_stripe":"#010203")", {}, {}, u"#010203"_s},
        {R"(,"color_stripe":"#010203","color_stripe_hex":"#040506")", u"Voice"_s, u"Voice"_s, u"#040506"_s},
        {R"(,"color_stripe":[1],"color_stripe_hex":"#040506")", u"Voice"_s, u"Voice"_s, u"#040506"_s},
        {R"(,"color_stripe":null)", u"Voice"_s, u"Voice"_s, u"#7F78DE"_s},
    };
    for (const Case &one : cases) {
        const Project project =
            decoded(documentWith(R"(,"voices":[{"id":"00000000-0000-0000-0000-000000000001")" + one.members + "}]"));
        ASSERT_EQ(project.voices.size(), 1);
        EXPECT_EQ(project.voices.first(),
                  (ProjectVoice{VoiceId(sampleUuid(1)), {}, one.displayName, one.castName, one.color}))
            << one.members.toStdString();
    }
    const QByteArray wrong = R"(,"voices":[{"id":"00000000-0000-0000-0000-000000000001","color_stripe":7}])";
    EXPECT_EQ(problemOf(documentWith(wrong)), u"voices[0]: the key \"color_stripe\" has a value of the wrong type"_s);
}

TEST(ProjectDecoding, ABrokenPresetVoiceIsIgnored) {
    const QByteArray broken[] = {
        "7",
        "null",
        "\"x\"",
        "[]",
        "[{},[1]]",
        "{}",
        R"({"elevenlabs_voice_id":""})",
        R"({"elevenlabs_voice_id":"a","display_name":{"deep":[1,{"x":2}]},"cast_name":[]})",
        R"({"elevenlabs_voice_id":3,"cast_name":"C","unknown":{"name":"N"}})",
    };
    for (const QByteArray &voice : broken) {
        const Project project = decoded(documentWith(
            ",\"presets\":[" + presetText().replace(R"("name":"N")", R"("voice":)" + voice + R"(,"name":"N")") + "]"));
        ASSERT_EQ(project.presets.size(), 1) << voice.toStdString();
        EXPECT_FALSE(project.presets.first().voice) << voice.toStdString();
        EXPECT_EQ(project.presets.first().name, u"N"_s);
    }
    const Project good =
        decoded(documentWith(",\"presets\":[" + presetText(R"(,"voice":{"elevenlabs_voice_id":"a"})") + "]"));
    EXPECT_EQ(good.presets.first().voice, (ProjectPresetVoice{u"a"_s, u"Voice"_s, u"Voice"_s, u"#7F78DE"_s}));
    // A valid voice as the last key doesn't make the preset itself tolerated.
    EXPECT_EQ(problemOf(documentWith(
                  ",\"presets\":[" +
                  presetText(R"(,"voice":{"elevenlabs_voice_id":"a"})").replace(R"("mode":"Natural",)", "") + "]")),
              u"presets[0]: the key \"mode\" is missing"_s);
}

TEST(ProjectDecoding, AnEmptyPronunciationIsComplete) {
    const Project project = decoded(pronunciations("{},{}"));
    ASSERT_EQ(project.pronunciations.size(), 2);
    const PronunciationEntry &entry = project.pronunciations.first();
    EXPECT_FALSE(entry.id.isNull());
    EXPECT_NE(entry.id, project.pronunciations.last().id);
    PronunciationEntry expected;
    expected.id = entry.id;
    expected.createdAt = readingTime;
    EXPECT_EQ(entry, expected);
}

TEST(ProjectDecoding, OlderPronunciationKeysAreReadIfTheNewerAreMissing) {
    const QByteArray older = R"("word":"w","alias":"al","phonemes":"ph","isEnabled":false)";
    const auto entryOf = [](const QByteArray &members) {
        return decoded(pronunciations("{" + members + "}")).pronunciations.value(0);
    };
    EXPECT_EQ(entryOf(older).spelling, u"w"_s);
    EXPECT_EQ(entryOf(older).phoneticOverride, u"al"_s);
    EXPECT_FALSE(entryOf(older).isEnabled);
    EXPECT_EQ(entryOf(older + R"(,"mode":"advanced")").phoneticOverride, u"ph"_s);
    EXPECT_EQ(entryOf(R"("mode":"simple","phonemes":"ph")").phoneticOverride, QString());
    EXPECT_EQ(entryOf(older + R"(,"phonetic_override":"po")").phoneticOverride, u"po"_s);
    EXPECT_TRUE(entryOf(older + R"(,"is_enabled":true)").isEnabled);
    EXPECT_EQ(entryOf(R"("mode":"simple","phonemes":{"x":[]},"alias":"al")").phoneticOverride, u"al"_s);
    EXPECT_EQ(problemOf(pronunciations(R"({"mode":"advanced","phonemes":{"x":[]},"alias":"al"})")),
              u"pronunciations[0]: the key \"phonemes\" has a value of the wrong type"_s);
    EXPECT_EQ(decoded(pronunciations("{" + older + "},{}")).pronunciations.last().spelling, QString());
}

TEST(ProjectDecoding, FileNamesCantLeaveTheirFolder) {
    const auto nameOf = [](const QByteArray &stored) {
        return onlyLine(decoded(withTake(QByteArray(takeText).replace("a.wav", stored)))).takes.value(0).filename;
    };
    EXPECT_EQ(nameOf("../../secret.wav"), u"secret.wav"_s);
    EXPECT_EQ(nameOf(".."), QString());
    EXPECT_EQ(nameOf("\\u0000"), QString());
}

TEST(ProjectDecoding, ALineWithoutSettingsFallsBack) {
    const Project project = decoded(
        documentWith(",\"lines\":[" + lineText(1, 0, R"(,"preset_id":"00000000-0000-0000-0000-000000000099")") + "]"));
    EXPECT_FALSE(onlyLine(project).settings);
    EXPECT_EQ(project.effectiveSettings(onlyLine(project)).model, u"v2"_s);
}

TEST(ProjectDecoding, WrongDocumentsFailAndSayWhere) {
    const QByteArray full = documentWith({});
    const std::pair<QByteArray, QString> cases[] = {
        {withTake(QByteArray(takeText).replace("12:34:56Z", "12:34Z")),
         u"lines[0].takes[0].generated_at: the value has the wrong type"_s},
        {withTake(takeText + "," + QByteArray(takeText).replace("\"v2\"", "2")),
         u"lines[0].takes[1].settings_snapshot.model: the value has the wrong type"_s},
        {withTake("null"), u"lines[0].takes[0]: the value has the wrong type"_s},
        {withTake("[]"), u"lines[0].takes[0]: the value has the wrong type"_s},
        {documentWith(",\"lines\":[" + lineText(1, 0).replace("\"notes\":\"\",", "") + "]"),
         u"lines[0]: the key \"notes\" is missing"_s},
        {documentWith(",\"lines\":[" + lineText(1, 0).replace("\"notes\":\"\"", "\"notes\":null") + "]"),
         u"lines[0]: the key \"notes\" is missing"_s},
        {documentWith(R"(,"selection":{})"), u"selection: the key \"selected_line_ids\" is missing"_s},
        {documentWith(R"(,"selection":{"selected_line_ids":["x"]})"),
         u"selection.selected_line_ids[0]: the value has the wrong type"_s},
        {documentWith(R"(,"tabs":{})"), u"tabs: the value has the wrong type"_s},
        {documentWith(R"(,"tabs":3)"), u"tabs: the value has the wrong type"_s},
        {documentWith(R"(,"pronunciations":[{"mode":"loud"}])"),
         u"pronunciations[0].mode: the value has the wrong type"_s},
        {QByteArray(full).replace("48000", "48000.5"), u"audio_settings.sample_rate: the value has the wrong type"_s},
        {QByteArray(full).replace("48000", "9223372036854775808"),
         u"audio_settings.sample_rate: the value has the wrong type"_s},
        {"null", u"the value has the wrong type"_s},
        {"[]", u"the value has the wrong type"_s},
        {"{}", u"the key \"audio_settings\" is missing"_s},
    };
    for (const auto &[text, problem] : cases)
        EXPECT_EQ(problemOf(text), problem) << text.toStdString();
}

TEST(ProjectDecoding, DatesHaveOneForm) {
    for (const QByteArray date :
         {"2024-05-31T12:34:56.5Z", "2024-05-31T12:34:56", "2024-05-31 12:34:56Z", "2024-05-31T12:34:56+00:00",
          "2024-02-30T12:34:56Z", "2024-05-31T24:00:00Z", "2024-05-31T12:60:00Z", "2024-05-31T12:34:60Z", "",
          "2024-13-01T00:00:00Z", "20x4-05-31T12:34:56Z", "1717158896"})
        EXPECT_EQ(problemOf(documentWith({}).replace(R"("created_at":"2024-05-31T12:34:56Z")",
                                                     R"("created_at":")" + date + "\"")),
                  u"created_at: the value has the wrong type"_s)
            << date.toStdString();
}

TEST(ProjectDecoding, IdsHaveOneFormInEitherCase) {
    const auto withId = [](const QByteArray &id) {
        return documentWith({}).replace("00000000-0000-0000-0000-000000000009", id);
    };
    EXPECT_EQ(decoded(withId("abcdefAB-CDEF-abcd-EFab-cdefABCDEF01")).projectId.text(),
              u"ABCDEFAB-CDEF-ABCD-EFAB-CDEFABCDEF01"_s);
    for (const QByteArray id : {"{00000000-0000-0000-0000-000000000009}", "00000000000000000000000000000009", "",
                                "00000000-0000-0000-0000-00000000000g", "00000000-0000-0000-0000-0000000009",
                                "--------0000-0000-0000-000000000009", "00000000-0000-0000-0000-------------",
                                "0-000000-0000-0000-0000-000000000009"})
        EXPECT_EQ(problemOf(withId(id)), u"project_id: the value has the wrong type"_s) << id.toStdString();
}

TEST(ProjectDecoding, NumbersKeepTheirValueInEveryForm) {
    const auto styleOf = [](const QByteArray &number) {
        const QByteArray preset = presetText({}).replace("\"style\":0.5", "\"style\":" + number);
        return decoded(documentWith(",\"presets\":[" + preset + "]")).presets.first().settings.style;
    };
    const std::pair<QByteArray, double> cases[] = {{"0e99", 0.0},
                                                   {"-0.000E-99", 0.0},
                                                   {"0.0e+7", 0.0},
                                                   {"1e2", 100.0},
                                                   {"-2.5", -2.5},
                                                   {"0.1", 0.1},
                                                   {"5e-324", 5e-324},
                                                   {"1E22", 1e22},
                                                   {"0.30000000000000004", 0.30000000000000004},
                                                   {"18446744073709551615", 18446744073709551615.0}};
    for (const auto &[text, value] : cases)
        EXPECT_EQ(styleOf(text), value) << text.toStdString();
    for (const char *number : {"9e308", "-9e308", "1e-400"})
        EXPECT_EQ(problemOf(documentWith(",\"presets\":[" + presetText({}).replace("0.5", number) + "]")),
                  u"presets[0].style: the value has the wrong type"_s)
            << number;
    EXPECT_FALSE(problemOf(documentWith({}).replace(":48000", ":9223372036854775808")).isEmpty());
}

TEST(ProjectDecoding, ANewerVersionTakesPrecedenceOverBrokenRecords) {
    const std::pair<QByteArray, QString> cases[] = {
        {R"({"schema_version":2})", u"newer 2"_s},
        {R"({"lines":7,"tabs":[{"id":[]}],"schema_version":3,"voices":"x"})", u"newer 3"_s},
        {R"({"schema_version":9223372036854775807})", u"newer 9223372036854775807"_s},
        {R"({"schema_version":"2"})", u"schema_version: the value has the wrong type"_s},
        {R"({"schema_version":[2]})", u"schema_version: the value has the wrong type"_s},
        {R"({"schema_version":2.5})", u"schema_version: the value has the wrong type"_s},
        {R"({"x":{"schema_version":2}})", u"the key \"audio_settings\" is missing"_s},
        {R"([{"schema_version":2}])", u"the value has the wrong type"_s},
        {R"({"schema_version":1})", u"the key \"audio_settings\" is missing"_s},
    };
    for (const auto &[text, problem] : cases)
        EXPECT_EQ(problemOf(text), problem) << text.toStdString();
    EXPECT_TRUE(problemOf(R"({"schema_version":2)").startsWith(u"The text is not JSON at byte"_s));
    // An older version is read, and written as the current one.
    for (const QByteArray version : {"0", "-5"}) {
        const QByteArray older = documentWith({}).replace("\"schema_version\":1", "\"schema_version\":" + version);
        EXPECT_TRUE(encodeProject(decoded(older)).contains("\"schema_version\": 1,"));
    }
}

TEST(ProjectDecoding, UnknownKeysAreSkippedButBoundlessNestingIsRefused) {
    const auto nested = [](int levels) {
        return documentWith(",\"future\":" + QByteArray(levels, '[') + QByteArray(levels, ']'));
    };
    EXPECT_EQ(decoded(nested(511)).projectName, u"P"_s);
    EXPECT_TRUE(problemOf(nested(512)).endsWith(u"it is nested too deeply."_s));
    EXPECT_TRUE(problemOf(nested(1'000'000)).endsWith(u"it is nested too deeply."_s));
    QByteArray objects;
    for (int i = 0; i < 100'000; ++i)
        objects += R"({"schema_version":)";
    EXPECT_TRUE(problemOf(objects).endsWith(u"it is nested too deeply."_s));
    EXPECT_TRUE(problemOf(QByteArray(1'000'000, '[')).endsWith(u"it is nested too deeply."_s));
}

TEST(ProjectDecoding, TextThatIsNotUtf8OrNotJsonFails) {
    const auto named = [](const QByteArray &name) { return documentWith({}).replace("\"P\"", '"' + name + '"'); };
    for (const QByteArray name :
         {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE0\x80\x80", "\\uDC00", "\\uD800x"})
        EXPECT_FALSE(problemOf(named(name)).isEmpty()) << name.toHex().toStdString();
    EXPECT_EQ(decoded(named("\\uD83D\\uDE00 \xF0\x9F\x98\x80 \\u00e9")).projectName, u"\U0001F600 \U0001F600 é"_s);
    EXPECT_FALSE(problemOf(documentWith({}) + QByteArray("\0x", 2)).isEmpty());
    EXPECT_FALSE(problemOf(documentWith({}) + "x").isEmpty());
    EXPECT_FALSE(problemOf({}).isEmpty());
    EXPECT_FALSE(problemOf(documentWith(",\"x\":1e999")).isEmpty());
}

TEST(ProjectDecoding, MutatedDocumentsAreReadOrRefused) {
    const QByteArray original = encodeProject(fullProject());
    std::mt19937 random(20240531);
    const auto below = [&](qsizetype limit) { return static_cast<qsizetype>(random() % static_cast<size_t>(limit)); };
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        QByteArray text = original;
        for (qsizetype changes = 1 + below(4); changes > 0; --changes) {
            const qsizetype at = below(text.size());
            if (random() % 3 == 0)
                text.remove(at, 1 + below(20));
            else if (random() % 2 == 0)
                text[at] = static_cast<char>(random());
            else
                text.insert(at, original.mid(below(original.size()), below(60)));
        }
        refused += problemOf(text).isEmpty() ? 0 : 1;
    }
    EXPECT_GT(refused, 1000);
}

} // namespace
} // namespace orlenta::model
