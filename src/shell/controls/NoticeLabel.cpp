#include "shell/controls/NoticeLabel.h"

#include <QtGui/QAccessible>

#include "shell/editor/list/ScriptAccessibility.h"

namespace orlenta::shell {
namespace {

void announceNotice(QObject *object, QAccessible::Event what) {
    QAccessibleEvent event(object, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

NoticeLabel::NoticeLabel(QWidget *parent) : PlainLabel(parent) {
    installScriptAccessibility();
    setWordWrap(true);
}

void NoticeLabel::setNotice(const QString &subject, const QString &text) {
    setAccessibleName(subject.isEmpty() || text.isEmpty() ? text : QStringLiteral("%1: %2").arg(subject, text));
    if (this->text() == text)
        return;
    setText(text);
    if (text.isEmpty())
        return;
    announceNotice(this, QAccessible::Alert);
    // Linux screen readers announce a notification when it is shown, and this one may be on screen already.
    if (isVisible())
        announceNotice(this, QAccessible::ObjectShow);
}

} // namespace orlenta::shell
