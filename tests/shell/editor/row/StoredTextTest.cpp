#include "shell/editor/row/StoredText.h"

#include <random>

#include <gtest/gtest.h>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include "shell/editor/row/PlainTextField.h"

namespace orlenta::shell {
namespace {

using namespace Qt::StringLiterals;

/// A field that edits a stored text.
struct Edited {
    explicit Edited(const QString &text) { field.showText(text); }

    /// Replaces text, given positions in the document.
    void replace(int from, int to, const QString &typed) {
        QTextCursor cursor(&document);
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.insertText(typed);
    }

    PlainTextField field;
    QTextDocument &document = *field.document();
};

/// Makes invisible characters visible in a failure.
std::string visible(const QString &text) {
    return text.toUtf8().toPercentEncoding(" ").toStdString();
}

const QString everyKind =
    u"Bonjour\u00A0! \uFEFFA\r\nB\rC\u2028D\u2029E\nF\u202FG\u0085H\uFFFC\uFDD0I\r\r\n\nJ\U0001F600"_s;

TEST(StoredText, TypingAnywhereChangesOnlyWhatWasTyped) {
    const StoredText stored(everyKind);
    const auto length = static_cast<int>(stored.rawPosition(everyKind.size()));
    for (int place = 0; place <= length; ++place) {
        SCOPED_TRACE(place);
        Edited text(everyKind);
        QString expected = everyKind;
        expected.insert(stored.storedPosition(place), u"x\u00A0y"_s);
        text.replace(place, place, u"x\u00A0y"_s);
        EXPECT_EQ(visible(text.field.text()), visible(expected));
        text.document.undo();
        EXPECT_EQ(visible(text.field.text()), visible(everyKind));
    }
}

TEST(StoredText, DeletingTakesTheBreakAtTheCaretOutOfSeveral) {
    Edited text(u"a\n\r\n\u2029\rb"_s);
    text.replace(2, 3, {});
    EXPECT_EQ(visible(text.field.text()), visible(u"a\n\u2029\rb"_s));
    text.replace(1, 2, {});
    EXPECT_EQ(visible(text.field.text()), visible(u"a\u2029\rb"_s));
    text.replace(0, 1, u"\n"_s);
    EXPECT_EQ(visible(text.field.text()), visible(u"\n\u2029\rb"_s));
}

TEST(StoredText, MovingTextAcrossLinesKeepsTheirBreaks) {
    Edited text(u"word one\r\ntwo\u2029three"_s);
    QTextCursor cursor(&text.document);
    cursor.beginEditBlock();
    cursor.setPosition(0);
    cursor.setPosition(5, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(u" word"_s);
    cursor.endEditBlock();
    EXPECT_EQ(visible(text.field.text()), visible(u"one\r\ntwo\u2029three word"_s));
}

TEST(StoredText, ALineFeedTypedAfterACarriageReturnStaysALineOfItsOwn) {
    Edited text(u"a\rb"_s);
    text.replace(2, 2, u"\n"_s);
    EXPECT_EQ(visible(text.field.text()), visible(u"a\n\nb"_s));
    Edited joined(u"a\r\rX\nb"_s);
    joined.replace(3, 4, {});
    EXPECT_EQ(visible(joined.field.text()), visible(u"a\n\n\nb"_s));
}

TEST(StoredText, PositionsOfTextAndDocumentMatch) {
    const StoredText text(u"ab\r\ncd\r\n"_s);
    const std::pair<int, int> positions[] = {{0, 0}, {2, 2}, {3, 4}, {4, 5}, {5, 6}, {6, 8}};
    for (const auto &[raw, stored] : positions) {
        EXPECT_EQ(text.storedPosition(raw), stored);
        EXPECT_EQ(text.rawPosition(stored), raw);
    }
}

// The field would show another text once the line is shown anew.
TEST(StoredText, RandomEditsLeaveATextThatTheDocumentShowsAlike) {
    std::mt19937 random(7);
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const QStringList pieces{u"\r"_s,     u"\n"_s, u"\r\n"_s, u"\u2028"_s, u"\u2029"_s,
                             u"\u00A0"_s, u"a"_s,  u"bc"_s,   u""_s};
    for (int round = 0; round < 300; ++round) {
        QString initial;
        for (int i = below(12); i > 0; --i)
            initial += pieces.at(below(static_cast<int>(pieces.size())));
        Edited text(initial);
        for (int edits = 0; edits < 20; ++edits) {
            const int length = text.document.characterCount();
            const int from = below(length);
            if (below(5) == 0)
                text.document.undo();
            else
                text.replace(from, from + below(length - from), pieces.at(below(static_cast<int>(pieces.size()))));
            ASSERT_EQ(visible(Edited(text.field.text()).document.toRawText()), visible(text.document.toRawText()))
                << round << ' ' << edits;
        }
    }
}

} // namespace
} // namespace orlenta::shell
