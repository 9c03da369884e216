#include <gtest/gtest.h>
#include <QtGui/QClipboard>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/controls/MessageBox.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/WholeTextDialog.h"
#include "shell/editor/NoticeBar.h"
#include "shell/ShellSession.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using testing::buttonNamed;

QString failedExports(int count) {
    QStringList names;
    for (int clip = 1; clip <= count; ++clip)
        names.append(u"Harbour_Narrator_%1"_s.arg(clip));
    return u"Export failed for: "_s + names.join(u", "_s);
}

TEST(LongMessages, AreCutBetweenCharactersAndLinesWithACount) {
    EXPECT_EQ(shownStart(u"abc"_s, {3, 1}), u"abc"_s);
    EXPECT_EQ(shownPart(u"abc"_s, {3, 1}), QString());
    EXPECT_EQ(shownStart(u"a\nb\nc"_s, {100, 2}), u"a\nb…"_s);
    EXPECT_EQ(shownPart(u"a\nb\nc"_s, {100, 2}), u"3 of 5 characters shown"_s);
    EXPECT_EQ(shownPart(QString(40'312, u'x'), {300, 3}), u"300 of 40,312 characters shown"_s);
    EXPECT_EQ(shownName(u"Act\r\none"_s), u"Act  one"_s);
    EXPECT_LE(shownName(QString(1'000'000, u'x')).size(), 200);
}

TEST(LongMessages, ToolTipsAreBrokenIntoLines) {
    EXPECT_EQ(shownTip(u"Short."_s), u"Short."_s);
    const QString words = u"word "_s.repeated(60).trimmed();
    const QStringList lines = shownTip(words).split(u'\n');
    EXPECT_GE(lines.size(), 3);
    for (const QString &line : lines)
        EXPECT_LE(line.size(), 80);
    EXPECT_EQ(lines.join(u' '), words);
}

TEST(LongMessages, ANoticeTakesAFewLinesAndShowsTheRestOnRequest) {
    NoticeBar bar;
    bar.resize(700, 10);
    bar.setMessage(u"Short."_s);
    EXPECT_EQ(buttonNamed(bar, u"Show All"_s), nullptr);
    const QString message = failedExports(500);
    bar.setMessage(message);
    EXPECT_LE(bar.heightForWidth(700), bar.fontMetrics().height() * 8);
    QAbstractButton *all = buttonNamed(bar, u"Show All"_s);
    ASSERT_NE(all, nullptr);
    all->click();
    const auto *whole = bar.findChild<WholeTextDialog *>();
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(whole->field().toPlainText() + whole->text().mid(whole->field().toPlainText().size()), message);
    EXPECT_EQ(whole->text(), message);
}

TEST(LongMessages, AnAlertFitsTheScreenAndShowsTheRestOnRequest) {
    MessageBox box(QMessageBox::Warning);
    box.setAttribute(Qt::WA_DeleteOnClose, false);
    box.addButton(QMessageBox::Ok);
    const QString detail = failedExports(500);
    box.setMessage(u"Export Failed"_s, detail);
    box.open();
    EXPECT_LE(box.height(), box.screen()->availableGeometry().height());
    EXPECT_TRUE(box.informativeText().contains(u"of 1"_s)) << box.informativeText().toStdString();
    QAbstractButton *all = buttonNamed(box, u"Show All"_s);
    ASSERT_NE(all, nullptr);
    all->click();
    EXPECT_TRUE(box.isVisible());
    const auto *whole = box.findChild<WholeTextDialog *>();
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(whole->text(), u"Export Failed\n\n"_s + detail);
    EXPECT_TRUE(whole->field().isReadOnly());
    box.setMessage(u"Export Failed"_s, u"The disk is full."_s);
    EXPECT_EQ(buttonNamed(box, u"Show All"_s), nullptr);
}

/// The parts of a text as the dialog shows them, one after the other.
QStringList partsOf(WholeTextDialog &dialog) {
    QStringList parts{dialog.field().toPlainText()};
    for (auto *next : dialog.findChildren<QToolButton *>())
        if (next->accessibleName().startsWith(u"Next"_s))
            while (next->isEnabled()) {
                next->click();
                parts.append(dialog.field().toPlainText());
            }
    return parts;
}

TEST(WholeText, IsShownInPartsThatLeaveNothingOut) {
    for (const QString &text : {QString(100'000, u'a'), QString(200'000, u'\n'),
                                u"Words and words. "_s.repeated(60'000), u"😀"_s.repeated(30'000), QString()}) {
        WholeTextDialog dialog(u"Text"_s, text, WholeTextDialog::Use::Read, nullptr);
        dialog.setAttribute(Qt::WA_DeleteOnClose, false);
        dialog.show();
        const QStringList parts = partsOf(dialog);
        EXPECT_EQ(parts.join(QString()), text);
        for (const QString &part : parts) {
            EXPECT_LE(part.size(), 10'000);
            EXPECT_FALSE(part.endsWith(QChar(0xD83D)));
        }
    }
}

TEST(WholeText, EditsChangeOnlyWhatWasTyped) {
    const QString start = u"One\r\ntwo\u2028three.\u00a0"_s;
    const QString text = start + QString(50'000, u'x');
    WholeTextDialog dialog(u"Text"_s, text, WholeTextDialog::Use::Edit, nullptr);
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    dialog.show();
    QString reported;
    QObject::connect(&dialog, &WholeTextDialog::textEdited, [&](const QString &edited) { reported = edited; });
    QTest::keyClicks(&dialog.field(), u"A "_s);
    EXPECT_EQ(dialog.text(), u"A "_s + text);
    EXPECT_EQ(reported, dialog.text());
    partsOf(dialog);
    dialog.field().moveCursor(QTextCursor::End);
    QTest::keyClicks(&dialog.field(), u" end"_s);
    EXPECT_EQ(dialog.text(), u"A "_s + text + u" end"_s);
    const QString pasted = u"pasted words "_s.repeated(80'000);
    QGuiApplication::clipboard()->setText(pasted);
    dialog.field().paste();
    EXPECT_EQ(dialog.text(), u"A "_s + text + u" end"_s + pasted);
    EXPECT_LE(dialog.field().toPlainText().size(), 10'000);
    QTest::keyClicks(&dialog.field(), u"!"_s);
    EXPECT_EQ(dialog.text(), u"A "_s + text + u" end"_s + pasted + u'!');
}

} // namespace
} // namespace orlenta::shell
