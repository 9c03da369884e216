#include "shell/menus/TextCommands.h"

#include <QtGui/QClipboard>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTextEdit>

namespace orlenta::shell {
namespace {

template <typename Text>
void sendToText(Text &text, TextCommands::Command command) {
    switch (command) {
    case TextCommands::Command::Cut:
        text.cut();
        return;
    case TextCommands::Command::Copy:
        text.copy();
        return;
    case TextCommands::Command::Paste:
        text.paste();
        return;
    case TextCommands::Command::SelectAll:
        text.selectAll();
        return;
    }
    Q_UNREACHABLE();
}

QLineEdit *focusedLineEdit() {
    return qobject_cast<QLineEdit *>(QApplication::focusWidget());
}

QTextEdit *focusedTextEdit() {
    return qobject_cast<QTextEdit *>(QApplication::focusWidget());
}

} // namespace

bool TextCommands::canPaste(const QObject *field) {
    const auto *text = qobject_cast<const QTextEdit *>(field);
    return text != nullptr ? text->canPaste() : !QGuiApplication::clipboard()->text().isEmpty();
}

bool TextCommands::send(Command command) {
    if (command == Command::Paste && !canPaste(QApplication::focusWidget()))
        return false;
    if (QLineEdit *line = focusedLineEdit(); line != nullptr)
        sendToText(*line, command);
    else if (QTextEdit *text = focusedTextEdit(); text != nullptr)
        sendToText(*text, command);
    else
        return false;
    return true;
}

bool TextCommands::canUndo() {
    if (const QLineEdit *line = focusedLineEdit(); line != nullptr)
        return line->isUndoAvailable();
    const QTextEdit *text = focusedTextEdit();
    return text != nullptr && text->document()->isUndoAvailable();
}

bool TextCommands::canRedo() {
    if (const QLineEdit *line = focusedLineEdit(); line != nullptr)
        return line->isRedoAvailable();
    const QTextEdit *text = focusedTextEdit();
    return text != nullptr && text->document()->isRedoAvailable();
}

QList<QMetaObject::Connection> TextCommands::watchUndo(QObject *receiver, const std::function<void()> &changed) {
    if (const QLineEdit *line = focusedLineEdit(); line != nullptr)
        return {QObject::connect(line, &QLineEdit::textChanged, receiver, changed)};
    if (const QTextEdit *text = focusedTextEdit(); text != nullptr)
        return {QObject::connect(text, &QTextEdit::undoAvailable, receiver, changed),
                QObject::connect(text, &QTextEdit::redoAvailable, receiver, changed)};
    return {};
}

bool TextCommands::undo() {
    if (!canUndo())
        return false;
    if (QLineEdit *line = focusedLineEdit(); line != nullptr)
        line->undo();
    else
        focusedTextEdit()->undo();
    return true;
}

bool TextCommands::redo() {
    if (!canRedo())
        return false;
    if (QLineEdit *line = focusedLineEdit(); line != nullptr)
        line->redo();
    else
        focusedTextEdit()->redo();
    return true;
}

} // namespace orlenta::shell
