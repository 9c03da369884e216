#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

class QMessageBox;
class QWidget;

namespace orlenta::shell {

/// Where a failure comes from. Each source has at most one alert: a newer failure takes the older one's place.
enum class AlertSource { Save, LocalVoices, Generation, Playback };

/// The failures of one window, shown one after the other as sheets on it, in the order in which they came. What keeps
/// failing changes the words of one alert instead of piling up many. Main thread.
class ErrorAlerts final : public QObject {
    Q_OBJECT
public:
    struct Alert {
        AlertSource source = AlertSource::Save;
        QString title;
        QString detail;
        /// Called once the user has dismissed it.
        std::function<void()> dismissed;
    };

    explicit ErrorAlerts(QWidget &window);

    void show(const Alert &alert);
    /// Takes back an alert that no longer holds.
    void withdraw(AlertSource source);
    /// The alert on screen, or null.
    [[nodiscard]] QMessageBox *box() const;

private:
    [[nodiscard]] bool isClosing() const;
    void showNext();
    void fill(const Alert &alert);

    QWidget &m_window;
    QList<Alert> m_alerts;
    QPointer<QMessageBox> m_box;
};

} // namespace orlenta::shell
