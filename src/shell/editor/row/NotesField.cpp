#include "shell/editor/row/NotesField.h"

#include <QtGui/QFocusEvent>
#include <QtGui/QPainter>

#include "shell/menus/CommandActions.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

NotesField::NotesField(QWidget *parent) : PlainTextField(parent) {
    setTabChangesFocus(true);
    setPlaceholderText(QStringLiteral("Notes on this line"));
    setToolTip(tipOf(CommandId::EditNotes));
    connect(this, &PlainTextField::textEdited, this, [this] { Q_EMIT notesEdited(text()); });
    applyColors();
}

void NotesField::setNotes(const QString &notes) {
    if (notes != text())
        showText(notes);
}

void NotesField::showText(const QString &text) {
    PlainTextField::showText(text);
    setReadOnly(isCut());
}

void NotesField::focusInEvent(QFocusEvent *event) {
    PlainTextField::focusInEvent(event);
    viewport()->update();
    Q_EMIT entered();
}

void NotesField::focusOutEvent(QFocusEvent *event) {
    PlainTextField::focusOutEvent(event);
    viewport()->update();
    if (!isTemporary(event->reason()))
        Q_EMIT left();
}

void NotesField::paintEvent(QPaintEvent *event) {
    PlainTextField::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    painting::drawFocusRing(&painter, viewport()->rect(), Theme::radius(this), palette());
}

void NotesField::changeEvent(QEvent *event) {
    PlainTextField::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void NotesField::applyColors() {
    const QColor muted = ThemeColors::of(palette()).textMuted;
    if (palette().color(QPalette::Text) == muted)
        return;
    QPalette own = palette();
    own.setColor(QPalette::Text, muted);
    setPalette(own);
}

} // namespace orlenta::shell
