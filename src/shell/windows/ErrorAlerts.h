#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

class QAbstractButton;
class QMessageBox;
class QWidget;

namespace orlenta::shell {

class MessageBox;

/// The source of a failure. Each source has at most one alert; a newer failure replaces the older one.
enum class AlertSource { Save, Generation, Playback };

/// Shows the failures of a window one after the other, as sheets, in the order they happened. A repeated failure
/// updates its alert instead of adding another. Main thread.
class ErrorAlerts final : public QObject {
    Q_OBJECT
public:
    /// A button that closes the alert and then does something about the failure.
    struct Action {
        QString text;
        QString tip;
        std::function<void()> run;
    };
    struct Alert {
        AlertSource source = AlertSource::Save;
        QString title;
        QString detail;
        /// Called when the user dismisses the alert.
        std::function<void()> dismissed;
        QList<Action> actions = {};
    };

    explicit ErrorAlerts(QWidget &window);

    void show(const Alert &alert);
    /// Removes an alert that no longer applies.
    void withdraw(AlertSource source);
    /// The alert on screen, or null.
    [[nodiscard]] QMessageBox *box() const;

private:
    [[nodiscard]] bool isClosing() const;
    void showNext();
    void fill(const Alert &alert);

    QWidget &m_window;
    QList<Alert> m_alerts;
    QPointer<MessageBox> m_box;
    /// The buttons of the shown alert's actions.
    QList<QAbstractButton *> m_actionButtons;
};

} // namespace orlenta::shell
