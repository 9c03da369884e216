#include "shell/controls/PlainLabel.h"

namespace orlenta::shell {

PlainLabel::PlainLabel(const QString &text, QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setText(text);
}

} // namespace orlenta::shell
