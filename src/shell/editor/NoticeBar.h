#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtWidgets/QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

class NoticeLabel;

/// A button beside a message.
struct NoticeAction {
    QString text;
    QString tip;
    std::function<void()> run;
};

/// A message that stays until it is dismissed with its button or with Escape, and may offer something to do about it.
/// Hidden while there is none. Of a long message it shows the start and how long it is; "Show All" opens the rest.
class NoticeBar final : public QWidget {
    Q_OBJECT
public:
    enum class Tone { Warning, Information };

    explicit NoticeBar(QWidget *parent = nullptr);

    /// An empty text hides the bar.
    void setMessage(const QString &message, Tone tone = Tone::Warning, const QList<NoticeAction> &actions = {});

Q_SIGNALS:
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();
    void showWholeMessage();
    void setActions(const QList<NoticeAction> &actions);

    QString m_message;
    Tone m_tone = Tone::Warning;
    QHBoxLayout *m_actions = nullptr;
    QList<QPushButton *> m_buttons;
    QLabel *m_icon = nullptr;
    NoticeLabel *m_text = nullptr;
    QPushButton *m_showAll = nullptr;
    QToolButton *m_dismiss = nullptr;
};

} // namespace orlenta::shell
