#include "tags/SentenceSplitter.h"

#include <chrono>

#include <gtest/gtest.h>

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

void expectSentences(const QString &text, const QStringList &sentences) {
    EXPECT_EQ(splitSentences(text).join(u" | "_s).toStdString(), sentences.join(u" | "_s).toStdString());
}

TEST(SentenceSplitter, EndsSentencesAtTheirMarks) {
    expectSentences(u"He left. She slept! Why? Because."_s, {u"He left."_s, u"She slept!"_s, u"Why?"_s, u"Because."_s});
    expectSentences(u"One sentence"_s, {u"One sentence"_s});
    expectSentences(u"ok. lower goes on"_s, {u"ok."_s, u"lower goes on"_s});
    expectSentences(u"Visit a.b or a!bo. Pay 3.50 now."_s, {u"Visit a.b or a!bo."_s, u"Pay 3.50 now."_s});
    expectSentences(u"He said \"Stop.\" She left."_s, {u"He said \"Stop.\""_s, u"She left."_s});
    expectSentences(u"\u3084\u3081\u3066\u3002\u3044\u304F\u3088\u3002"_s,
                    {u"\u3084\u3081\u3066\u3002"_s, u"\u3044\u304F\u3088\u3002"_s});
    expectSentences(u"Hi . . . there"_s, {u"Hi . . ."_s, u"there"_s});
    expectSentences(u""_s, {});
    expectSentences(u" \n \r\n "_s, {});
}

TEST(SentenceSplitter, KeepsAbbreviationsEllipsesAndExclamationsTogether) {
    for (const QString &whole :
         {u"Dr. Smith went home."_s, u"Mr. and Mrs. Fox vs. St. John."_s, u"Approx. Ten, e.g. Bob, i.e. Him."_s,
          u"The U.S.A. Won."_s, u"J. Doe came."_s, u"\u00C9. Zola wrote."_s, u"Wait... what?"_s, u"Wait... What?"_s,
          u"Really?! Yes"_s, u"Really!? Yes"_s, u"(Mr.) Smith came."_s})
        expectSentences(whole, {whole});
    expectSentences(u"Dr. Smith went home. He slept."_s, {u"Dr. Smith went home."_s, u"He slept."_s});
    expectSentences(u"It is 5. Next."_s, {u"It is 5."_s, u"Next."_s});
    expectSentences(u"Go best. Now."_s, {u"Go best."_s, u"Now."_s});
}

TEST(SentenceSplitter, TakesTheLastLetterOfAWordForNoInitial) {
    for (const QString &first : {u"This is tomorrow's."_s, u"This is tomorrow\u2019s."_s, u"No, I don't."_s,
                                 u"In the 1980s."_s, u"\"It is hers and tomorrow's.\""_s, u"IT IS TOM'S."_s})
        expectSentences(first + u" Then she left."_s, {first, u"Then she left."_s});
    for (const QString &whole : {u"It was S. Then who came."_s, u"'S. Fox' is a name."_s, u"Tom's... Then what?"_s})
        expectSentences(whole, {whole});
}

TEST(SentenceSplitter, NeverCutsInsideATag) {
    expectSentences(u"[sighs. slowly] Well. Fine."_s, {u"[sighs. slowly] Well."_s, u"Fine."_s});
    expectSentences(u"[Sighs. Slowly! Now] Well. Fine."_s, {u"[Sighs. Slowly! Now] Well."_s, u"Fine."_s});
    expectSentences(u"[sighs.] Well."_s, {u"[sighs.] Well."_s});
    expectSentences(u"[\u3084\u3081\u3066\u3002] Hai."_s, {u"[\u3084\u3081\u3066\u3002] Hai."_s});
    expectSentences(u"Hello there. [laughs] Bye!"_s, {u"Hello there."_s, u"[laughs] Bye!"_s});
    expectSentences(u"Stop![Loudly] Go."_s, {u"Stop![Loudly] Go."_s});
}

TEST(SentenceSplitter, TakesBlankLinesAsEnds) {
    expectSentences(u"No stop here\r\n\r\nnext  one\rgoes\ton"_s, {u"No stop here"_s, u"next one goes on"_s});
    expectSentences(u"a\n \t \nb\n\n\nc"_s, {u"a"_s, u"b"_s, u"c"_s});
}

TEST(SentenceSplitter, LosesNoText) {
    const QString text = u"[a. B] Dr. X... \u00AB Oui. \u00BB No?! (Well.) \U0001F600! End [ open. Here. Fin"_s;
    EXPECT_EQ(splitSentences(text).join(u' ').toStdString(), text.toStdString());
}

TEST(SentenceSplitter, SplitsLongLinesInLinearTime) {
    const auto start = std::chrono::steady_clock::now();
    for (const QString &pattern : {u"a."_s, u"a. "_s, u"\" "_s, u".\""_s, u". "_s, u"[a. B] "_s, u"[. "_s, u"\n"_s})
        static_cast<void>(splitSentences(pattern.repeated(200'000 / pattern.size())));
    // Quadratic time on one of these would be minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

} // namespace
} // namespace orlenta::tags
