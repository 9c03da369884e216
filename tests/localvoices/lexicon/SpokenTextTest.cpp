#include "localvoices/lexicon/SpokenText.h"

#include <gtest/gtest.h>
#include <QtCore/QStringList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

/// Speech and pauses in milliseconds, like "Hello|1500|there".
QString outline(const QString &text) {
    QStringList pieces;
    for (const SpokenSegment &segment : readSpokenText(text, {}, PhonemeRules::Followed)) {
        QString said;
        for (const SpokenRun &run : segment.runs)
            said += run.phones.empty() ? run.text : u'(' + run.text + u')';
        pieces << said.simplified();
        if (segment.pauseAfter.count() > 0)
            pieces << QString::number(segment.pauseAfter.count());
    }
    return pieces.join(u'|');
}

} // namespace

TEST(SpokenText, MarkupBecomesPausesAndSounds) {
    struct Case {
        QString text;
        QString outline;
    };
    for (const Case &each : {
             Case{u"Hello there."_s, u"Hello there."_s},
             Case{u"Hello <break time=\"1.5s\" /> there"_s, u"Hello|1500|there"_s},
             Case{u"a<break time='250ms'/>b<BREAK time=\".5s\">c<break/>d"_s, u"a|250|b|500|c|500|d"_s},
             Case{u"a <break time=\"99s\"/> b"_s, u"a|3000|b"_s},
             Case{u"[whispers] Hush [short pause] now[long pause]"_s, u"Hush|400|now|1600|"_s},
             Case{u"a < b & c > d"_s, u"a < b & c > d"_s},
             Case{u"<speak>Hi <emphasis level=\"strong\">you</emphasis></speak>"_s, u"Hi you"_s},
             Case{u"<phoneme alphabet=\"cmu-arpabet\" ph=\"M AE1 D\">Mad</phoneme> man"_s, u"(Mad) man"_s},
             Case{u"<phoneme alphabet=\"other\" ph=\"m\">Mad</phoneme> man"_s, u"Mad man"_s},
             Case{u"an [open bracket"_s, u"an [open bracket"_s},
         })
        EXPECT_EQ(outline(each.text), each.outline);
}

TEST(SpokenText, PausesEndAtTenMinutesInAll) {
    std::chrono::milliseconds silence{0};
    for (const SpokenSegment &segment :
         readSpokenText(u"<break time=\"3s\"/>"_s.repeated(300), {}, PhonemeRules::Followed))
        silence += segment.pauseAfter;
    EXPECT_EQ(silence, std::chrono::minutes(10));
}

} // namespace orlenta::localvoices
