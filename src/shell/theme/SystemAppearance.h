#pragma once

#include <QtCore/QObject>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace orlenta::shell {

/// The desktop's choice between light and dark, asked of its settings portal and followed from there. Light until the
/// portal has answered, and where there is none.
class SystemAppearance final : public QObject {
    Q_OBJECT
public:
    explicit SystemAppearance(QObject *parent = nullptr);

    [[nodiscard]] bool prefersDark() const { return m_prefersDark; }

Q_SIGNALS:
    void prefersDarkChanged();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void takeReply(QDBusPendingCallWatcher *watcher);
    void take(const QVariant &value);

    bool m_prefersDark = false;
};

} // namespace orlenta::shell
