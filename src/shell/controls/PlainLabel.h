#pragma once

#include <QtWidgets/QLabel>

namespace orlenta::shell {

/// A label that shows its text as it is. QLabel alone would take a text that looks like HTML for HTML: names from a
/// project or the service could make it read files or offer links.
class PlainLabel : public QLabel {
    Q_OBJECT
public:
    explicit PlainLabel(QWidget *parent = nullptr) : PlainLabel(QString(), parent) {}
    explicit PlainLabel(const QString &text, QWidget *parent = nullptr);
};

} // namespace orlenta::shell
