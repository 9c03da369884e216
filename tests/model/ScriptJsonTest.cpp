#include <gtest/gtest.h>

#include "model/ScriptJson.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

const QByteArray scriptLine = R"({"castName":"Ana","codableColor":{"blue":0.25,"green":1,"red":0.5},)"
                              R"("directionAudioFilename":"d.wav","directionMode":"voice",)"
                              R"("generatedAudioFilename":"g.wav","id":"0C6F1C50-54C0-4D33-8D74-51C11D2F3A6B",)"
                              R"("mode":"Creative","model":"v3","presetName":"Calm","similarityBoost":0.7,)"
                              R"("speed":1.1,"stability":0.4,"style":0.2,"text":"One / two.","voiceId":"voice-1"})";

// The document without one member, whose value must not contain commas or braces unless it is the colour.
QByteArray withoutKey(const QByteArray &key) {
    QByteArray text = scriptLine;
    const qsizetype begin = text.indexOf('"' + key + '"');
    const qsizetype value = text.indexOf(':', begin) + 1;
    qsizetype end = text.at(value) == '{' ? text.indexOf('}', value) + 1 : text.indexOf(',', value);
    if (end < 0)
        return text.remove(begin - 1, text.size() - begin);
    return text.remove(begin, end + 1 - begin);
}

std::optional<ScriptLine> readLine(const QByteArray &text) {
    const auto lines = decodeScriptLines('[' + text + ']');
    return lines && lines->size() == 1 ? std::optional(lines->first()) : std::nullopt;
}

TEST(ScriptJson, ALineReadsAllThatItsFileKeeps) {
    const auto line = readLine(scriptLine);
    ASSERT_TRUE(line);
    ScriptLine expected;
    expected.id = LineId(QUuid(u"0C6F1C50-54C0-4D33-8D74-51C11D2F3A6B"_s));
    expected.text = u"One / two."_s;
    expected.castName = u"Ana"_s;
    expected.voiceId = u"voice-1"_s;
    expected.presetName = u"Calm"_s;
    expected.directionMode = DirectionMode::Voice;
    expected.model = u"v3"_s;
    expected.mode = u"Creative"_s;
    expected.stability = 0.4;
    expected.similarityBoost = 0.7;
    expected.style = 0.2;
    expected.speed = 1.1;
    expected.codableColor = {0.5, 1.0, 0.25};
    expected.directionAudioFilename = u"d.wav"_s;
    expected.generatedAudioFilename = u"g.wav"_s;
    EXPECT_EQ(*line, expected);
}

TEST(ScriptJson, OnlyTheVoiceAndTheFilesMayBeMissing) {
    for (const char *key : {"directionAudioFilename", "generatedAudioFilename", "voiceId"})
        EXPECT_TRUE(readLine(withoutKey(key))) << key;
    for (const char *key : {"castName", "codableColor", "directionMode", "id", "mode", "model", "presetName",
                            "similarityBoost", "speed", "stability", "style", "text"})
        EXPECT_FALSE(readLine(withoutKey(key))) << key;
    for (const char *channel : {R"("blue":0.25,)", R"("green":1,)", R"(,"red":0.5)"})
        EXPECT_FALSE(readLine(QByteArray(scriptLine).replace(channel, ""))) << channel;
    EXPECT_FALSE(readLine(QByteArray(scriptLine).replace("\"voice\"", "\"song\"")));
}

TEST(ScriptJson, RuntimeStateIsNeitherReadNorWritten) {
    const QByteArray busy =
        R"({"isGenerating":true,"waveformSamples":[1],"generatedAudioURL":"file:///x",)" + scriptLine.mid(1);
    ScriptLine line = readLine(busy).value_or(ScriptLine());
    EXPECT_EQ(line, readLine(scriptLine));
    const QByteArray written = encodeScriptLines({line});
    line.isGenerating = true;
    line.directionAudioURL = QUrl(u"file:///d.wav"_s);
    line.generatedAudioURL = QUrl(u"file:///g.wav"_s);
    line.waveformSamples = {0.5F};
    line.directionWaveformSamples = {0.25F};
    EXPECT_EQ(encodeScriptLines({line}), written);
    EXPECT_EQ(decodeScriptLines(written), QList{*readLine(scriptLine)});
}

TEST(ScriptJson, TabsReadBackEqualWithTheirKeysInOrder) {
    ScriptLine bare = *readLine(scriptLine);
    bare.voiceId.reset();
    bare.directionAudioFilename.reset();
    bare.generatedAudioFilename.reset();
    const QList<ScriptTab> tabs{{TabId::create(), u"Act 1"_s, {*readLine(scriptLine), bare}},
                                {TabId::create(), u"Empty"_s, {}}};
    const QByteArray bytes = encodeScriptTabs(tabs);
    EXPECT_EQ(decodeScriptTabs(bytes), tabs);
    EXPECT_EQ(encodeScriptLines({*readLine(scriptLine)}).replace(" ", "").replace("\n", ""),
              '[' + QByteArray(scriptLine).replace(" / ", "\\/") + ']');
}

TEST(ScriptJson, OneShapeIsntMistakenForTheOther) {
    const QByteArray lines = '[' + scriptLine + ']';
    const QByteArray tabs = R"([{"id":"0C6F1C50-54C0-4D33-8D74-51C11D2F3A6B","name":"A","lines":)" + lines + "}]";
    EXPECT_TRUE(decodeScriptTabs(tabs));
    EXPECT_FALSE(decodeScriptLines(tabs));
    EXPECT_FALSE(decodeScriptTabs(lines));
    for (const char *missing : {R"("name":"A",)", R"("lines":)" /* its array then stands without a key */})
        EXPECT_FALSE(decodeScriptTabs(QByteArray(tabs).replace(missing, ""))) << missing;
    for (const QByteArray text : {"", "{}", "null", "no json", "[1]"})
        EXPECT_FALSE(decodeScriptTabs(text) || decodeScriptLines(text)) << text.toStdString();
}

} // namespace
} // namespace orlenta::model
