#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

class NoticeLabel;

/// A message that stays until it is dismissed with its button or with Escape, and may offer something to do about it.
/// Hidden while there is none. Of a long message it shows the start and how long it is; "Show All" opens the rest.
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
    void showWholeMessage();

    QString m_message;
    QLabel *m_icon = nullptr;
    NoticeLabel *m_text = nullptr;
    QPushButton *m_showAll = nullptr;
    QToolButton *m_dismiss = nullptr;
};

} // namespace orlenta::shell
