#include "tags/ClipNames.h"

#include <gtest/gtest.h>

#include "tags/CharacterCount.h"

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

TEST(ClipNames, AreMadeOfVoiceFirstWordsAndNumber) {
    const struct {
        QString text;
        qsizetype number;
        QString castName;
        QString name;
    } cases[] = {
        {u"[whispers] Don't go there, Anna"_s, 3, u"Mia"_s, u"Mia - whispers Don t go.03"_s},
        {u"..."_s, 12, u"Mia"_s, u"Mia.12"_s},
        {u"Go"_s, 123, QString(), u"Voice - Go.123"_s},
        {u"caf\u00E9 e\u0301t\u00E9 2\u00BD"_s, 1, u"A/B: C"_s, u"AB C - caf\u00E9 e\u0301t\u00E9 2\u00BD.01"_s},
        {u"\U0001D400bc d"_s, 1, u"M"_s, u"M - \U0001D400bc d.01"_s},
        {QString(80, u'w'), 1, u"Mia"_s, u"Mia - "_s + QString(51, u'w') + u".01"_s},
        // The cut falls right after a space.
        {QString(50, u'w') + u" x"_s, 1, u"Mia"_s, u"Mia - "_s + QString(50, u'w') + u".01"_s},
    };
    for (const auto &[text, number, castName, name] : cases)
        EXPECT_EQ(clipName(text, number, castName), name);
}

TEST(ClipNames, NumberALineByItsPositionInTheFirstTabThatContainsIt) {
    model::Project project = model::Project::makeNew(u"P"_s, {});
    model::ProjectLine line = model::ProjectLine::makeNew();
    line.text = u"Hello"_s;
    EXPECT_EQ(clipName(project, line), u"Voice - Hello.01"_s) << "a line in no tab";
    project.tabs.append({model::TabId::create(), u"Two"_s, {model::LineId::create(), line.lineId}});
    project.voices.append(model::ProjectVoice());
    project.voices.last().id = model::VoiceId::create();
    project.voices.last().castName = u"Mia"_s;
    line.voiceId = project.voices.last().id;
    EXPECT_EQ(clipName(project, line), u"Mia - Hello.02"_s);
}

TEST(ClipNames, OfJoinedClipsNameTheirLines) {
    QList<model::LineId> script;
    for (int i = 0; i < 5; ++i)
        script.append(model::LineId::create());
    EXPECT_EQ(continuousClipName(u"Act 1: Night"_s, script, {script[3], script[1]}), u"Act 1 Night - Lines 2-4"_s);
    EXPECT_EQ(continuousClipName(u"Act 1"_s, script, {script[1], model::LineId::create()}), u"Act 1 - 2 Lines"_s);
    EXPECT_EQ(continuousClipName(u"Act 1"_s, script, {}), u"Act 1 - 0 Lines"_s);
    const QString cut = continuousClipName(QString(90, u'x'), script, script);
    EXPECT_EQ(cut, QString(48, u'x') + u" - Lines 1-5"_s);
}

TEST(ClipNames, AreCleanedForFileSystems) {
    EXPECT_EQ(cleanedClipName(u"  a/\\:?\"<>|*b \n\t c\u00A0d "_s), u"ab c d"_s);
    EXPECT_EQ(cleanedClipName(QString(59, u'a') + u" b"_s), QString(59, u'a')) << "cut behind the blank, then trimmed";
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    const QString cleaned = cleanedClipName(family.repeated(60));
    EXPECT_EQ(cleaned, family.repeated(10)) << "18 bytes each";
    EXPECT_EQ(cleanedClipName(QString(QChar(0x4E2D)).repeated(70)).toUtf8().size(), 180);
}

} // namespace
} // namespace orlenta::tags
