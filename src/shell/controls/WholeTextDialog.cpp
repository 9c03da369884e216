#include "shell/controls/WholeTextDialog.h"

#include <algorithm>
#include <functional>

#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/TextLabel.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr qsizetype partUnits = 10'000;
constexpr qsizetype partLines = 400;
/// How far before its limit a part may end to do so between two words.
constexpr qsizetype wordSearch = 500;

bool isBreak(QChar unit) {
    // The last two begin and end frames in a QTextDocument.
    return unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator ||
           unit == QChar(0xfdd0) || unit == QChar(0xfdd1);
}

qsizetype partEnd(const QString &text, qsizetype start) {
    const qsizetype limit = std::min(text.size(), start + partUnits);
    qsizetype lines = 0;
    for (qsizetype at = start; at < limit; ++at)
        if (isBreak(text.at(at)) && ++lines == partLines)
            return at + 1;
    if (limit == text.size())
        return limit;
    for (qsizetype at = limit; at > limit - wordSearch; --at)
        if (text.at(at - 1).isSpace())
            return at;
    return text.at(limit).isLowSurrogate() ? limit - 1 : limit;
}

QList<qsizetype> partBounds(const QString &text) {
    QList<qsizetype> bounds{0};
    while (bounds.last() < text.size())
        bounds.append(partEnd(text, bounds.last()));
    if (bounds.size() == 1)
        bounds.append(0);
    return bounds;
}

/// The text as an editor's document holds it, unit for unit: with one kind of line break.
QString inDocument(QString text) {
    std::replace_if(text.begin(), text.end(), isBreak, QChar(u'\n'));
    return text;
}

/// Hands a long paste over instead of laying it out in one piece.
class PartField final : public QPlainTextEdit {
public:
    std::function<void(const QString &)> longTextPasted;

protected:
    void insertFromMimeData(const QMimeData *source) override {
        if (source->text().size() > partUnits)
            longTextPasted(source->text());
        else
            QPlainTextEdit::insertFromMimeData(source);
    }
};

} // namespace

WholeTextDialog::WholeTextDialog(const QString &title, const QString &text, Use use, QWidget *parent)
    : QDialog(parent), m_text(text), m_bounds(partBounds(text)), m_previous(new QToolButton), m_next(new QToolButton),
      m_place(new TextLabel({}, TextLabel::Style::Caption)) {
    auto *field = new PartField;
    field->longTextPasted = [this](const QString &pasted) { insert(pasted); };
    m_field = field;
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    setAccessibleName(title);
    m_field->setReadOnly(use == Use::Read);
    m_field->setTabChangesFocus(true);
    m_field->setAccessibleName(title);
    if (use == Use::Read)
        m_field->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close this text (Esc)"_s);
    QPushButton *copy = buttons->addButton(u"Copy All"_s, QDialogButtonBox::ActionRole);
    copy->setToolTip(u"Copy the whole text"_s);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_field, 1);
    layout->addWidget(makePager());
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, &WholeTextDialog::copyAll);
    connect(m_field, &QPlainTextEdit::textChanged, this, &WholeTextDialog::takeEdit);
    const int unit = Theme::unit(this);
    resize(unit * 130, unit * 100);
    showPart(0);
}

QWidget *WholeTextDialog::makePager() {
    m_pager = new QWidget;
    auto *row = new QHBoxLayout(m_pager);
    row->setContentsMargins(0, 0, 0, 0);
    m_place->setWordWrap(false);
    row->addWidget(m_place);
    row->addStretch();
    const auto add = [this, row](QToolButton *button, const QString &icon, const QString &name, qsizetype step) {
        button->setIcon(Icon::named(icon));
        button->setAccessibleName(name);
        button->setToolTip(name);
        connect(button, &QToolButton::clicked, this, [this, step] { showPart(m_part + step); });
        row->addWidget(button);
    };
    add(m_previous, u"chevron-left"_s, u"Previous part of the text"_s, -1);
    add(m_next, u"chevron-right"_s, u"Next part of the text"_s, 1);
    return m_pager;
}

void WholeTextDialog::showPart(qsizetype part) {
    const QScopedValueRollback guard(m_isFilling, true);
    const qsizetype last = m_bounds.size() - 2;
    m_part = std::clamp<qsizetype>(part, 0, last);
    const qsizetype start = m_bounds.at(m_part);
    m_shown = inDocument(m_text.mid(start, m_bounds.at(m_part + 1) - start));
    m_field->setPlainText(m_shown);
    m_place->setText(QStringLiteral("Part %1 of %2").arg(m_part + 1).arg(last + 1));
    m_pager->setVisible(last > 0);
    m_previous->setEnabled(m_part > 0);
    m_next->setEnabled(m_part < last);
}

// Replaces only what differs, so that characters that the field shows as others, such as a carriage return, stay.
void WholeTextDialog::takeEdit() {
    QString shown = inDocument(m_field->document()->toRawText());
    if (m_isFilling || shown == m_shown)
        return;
    const auto [before, after] = std::mismatch(m_shown.cbegin(), m_shown.cend(), shown.cbegin(), shown.cend());
    const qsizetype same = before - m_shown.cbegin();
    const qsizetype most = std::min(m_shown.size(), shown.size()) - same;
    const auto tail = std::mismatch(m_shown.crbegin(), m_shown.crbegin() + most, shown.crbegin()).first;
    const qsizetype sameTail = tail - m_shown.crbegin();
    m_text.replace(m_bounds.at(m_part) + same, m_shown.size() - same - sameTail,
                   shown.mid(same, shown.size() - same - sameTail));
    const qsizetype grown = shown.size() - m_shown.size();
    for (qsizetype bound = m_part + 1; bound < m_bounds.size(); ++bound)
        m_bounds[bound] += grown;
    m_shown = std::move(shown);
    Q_EMIT textEdited(m_text);
}

void WholeTextDialog::insert(const QString &pasted) {
    const QTextCursor cursor = m_field->textCursor();
    const qsizetype at = m_bounds.at(m_part) + cursor.selectionStart();
    m_text.replace(at, cursor.selectionEnd() - cursor.selectionStart(), pasted);
    m_bounds = partBounds(m_text);
    const qsizetype caret = at + pasted.size();
    showPart(std::lower_bound(m_bounds.begin() + 1, m_bounds.end(), caret) - m_bounds.begin() - 1);
    QTextCursor moved = m_field->textCursor();
    moved.setPosition(static_cast<int>(caret - m_bounds.at(m_part)));
    m_field->setTextCursor(moved);
    Q_EMIT textEdited(m_text);
}

void WholeTextDialog::copyAll() const {
    QGuiApplication::clipboard()->setText(m_text);
}

} // namespace orlenta::shell
