#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QToolButton;

namespace orlenta::shell {

/// A message that stays in place until it is dismissed; hidden while there is none.
class NoticeBar final : public QWidget {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// The empty text hides the bar.
    void setMessage(const QString &message);

Q_SIGNALS:
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();

    QLabel *m_icon = nullptr;
    QLabel *m_text = nullptr;
    QToolButton *m_dismiss = nullptr;
};

} // namespace orlenta::shell
