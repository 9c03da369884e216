#include "shell/controls/NoticeLabel.h"

#include <QtGui/QAccessible>

#include "shell/editor/list/ScriptAccessibility.h"

namespace orlenta::shell {
namespace {

void tellOfNotice(QObject *object, QAccessible::Event what) {
    QAccessibleEvent event(object, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

NoticeLabel::NoticeLabel(QWidget *parent) : QLabel(parent) {
    installScriptAccessibility();
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void NoticeLabel::setNotice(const QString &subject, const QString &text) {
    setAccessibleName(subject.isEmpty() || text.isEmpty() ? text : QStringLiteral("%1: %2").arg(subject, text));
    if (this->text() == text)
        return;
    setText(text);
    if (text.isEmpty())
        return;
    tellOfNotice(this, QAccessible::Alert);
    // What a desktop's screen reader listens to is that a notification shows, and this one shows already.
    if (isVisible())
        tellOfNotice(this, QAccessible::ObjectShow);
}

} // namespace orlenta::shell
