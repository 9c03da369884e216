#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;

namespace orlenta::shell {

/// Below a text that is shown cut: how much of it is shown, and a button for the rest.
class CutTextMark final : public QWidget {
    Q_OBJECT
public:
    explicit CutTextMark(QWidget *parent);

    /// `part` is as from shownPart().
    void setPart(const QString &part);

Q_SIGNALS:
    void wholeTextRequested();

private:
    QLabel *m_part;
};

} // namespace orlenta::shell
