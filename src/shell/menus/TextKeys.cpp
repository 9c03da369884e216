#include "shell/menus/TextKeys.h"

#include <algorithm>

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include "shell/menus/TextCommands.h"

namespace orlenta::shell {
namespace {

// Qt's fields accept most of these themselves, but not all: neither Ctrl+Backspace nor Ctrl+Delete.
constexpr QKeySequence::StandardKey fieldKeys[] = {
    QKeySequence::Undo,
    QKeySequence::Redo,
    QKeySequence::Cut,
    QKeySequence::Copy,
    QKeySequence::Paste,
    QKeySequence::SelectAll,
    QKeySequence::Deselect,
    QKeySequence::DeleteEndOfLine,
    QKeySequence::DeleteCompleteLine,
    QKeySequence::InsertParagraphSeparator,
    QKeySequence::InsertLineSeparator,
    QKeySequence::MoveToNextChar,
    QKeySequence::MoveToPreviousChar,
    QKeySequence::MoveToNextWord,
    QKeySequence::MoveToPreviousWord,
    QKeySequence::MoveToNextLine,
    QKeySequence::MoveToPreviousLine,
    QKeySequence::MoveToNextPage,
    QKeySequence::MoveToPreviousPage,
    QKeySequence::MoveToStartOfLine,
    QKeySequence::MoveToEndOfLine,
    QKeySequence::MoveToStartOfBlock,
    QKeySequence::MoveToEndOfBlock,
    QKeySequence::MoveToStartOfDocument,
    QKeySequence::MoveToEndOfDocument,
    QKeySequence::SelectNextChar,
    QKeySequence::SelectPreviousChar,
    QKeySequence::SelectNextWord,
    QKeySequence::SelectPreviousWord,
    QKeySequence::SelectNextLine,
    QKeySequence::SelectPreviousLine,
    QKeySequence::SelectNextPage,
    QKeySequence::SelectPreviousPage,
    QKeySequence::SelectStartOfLine,
    QKeySequence::SelectEndOfLine,
    QKeySequence::SelectStartOfBlock,
    QKeySequence::SelectEndOfBlock,
    QKeySequence::SelectStartOfDocument,
    QKeySequence::SelectEndOfDocument,
};

bool isTextField(const QObject *object) {
    const auto *combo = qobject_cast<const QComboBox *>(object);
    return qobject_cast<const QLineEdit *>(object) != nullptr || qobject_cast<const QTextEdit *>(object) != nullptr ||
           qobject_cast<const QPlainTextEdit *>(object) != nullptr ||
           qobject_cast<const QAbstractSpinBox *>(object) != nullptr || (combo != nullptr && combo->isEditable());
}

bool isKeyOfFields(const QKeyEvent &key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool types = !key.text().isEmpty() && key.text().at(0).isPrint();
    if (types && (modifiers == Qt::NoModifier || modifiers == Qt::GroupSwitchModifier))
        return true;
    // Whatever these erase depends on the modifiers and the desktop, but it is always text.
    const bool erases = key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete;
    if (erases && (modifiers & ~Qt::ControlModifier) == Qt::NoModifier)
        return true;
    return std::any_of(std::begin(fieldKeys), std::end(fieldKeys),
                       [&key](QKeySequence::StandardKey standard) { return key.matches(standard); });
}

} // namespace

void TextKeys::install() {
    static QPointer<TextKeys> installed;
    if (installed != nullptr)
        return;
    installed = new TextKeys(qApp);
    qApp->installEventFilter(installed);
}

bool TextKeys::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::ShortcutOverride || !isTextField(watched))
        return QObject::eventFilter(watched, event);
    auto &key = *static_cast<QKeyEvent *>(event);
    if (!isKeyOfFields(key))
        return QObject::eventFilter(watched, event);
    key.setAccepted(!key.matches(QKeySequence::Paste) || TextCommands::canPaste(watched));
    return true;
}

} // namespace orlenta::shell
