#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QToolButton;

namespace orlenta::shell {

class NoticeLabel;

/// A message that stays until it is dismissed with its button or with Escape, and may offer something to do about it.
/// Hidden while there is none.
class NoticeBar final : public QWidget {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// An empty text hides the bar.
    void setMessage(const QString &message);
    /// Offers a button with this title; `tip` is its tool tip.
    void addAction(const QString &title, const QString &tip);

Q_SIGNALS:
    void dismissed();
    /// The user pressed the offered button.
    void actionTriggered();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();

    QLabel *m_icon = nullptr;
    NoticeLabel *m_text = nullptr;
    QToolButton *m_dismiss = nullptr;
};

} // namespace orlenta::shell
