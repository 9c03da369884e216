#pragma once

#include <QtCore/QObject>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace orlenta::shell {

/// The desktop's light or dark preference, read from its settings portal and kept up to date. Light until the portal
/// answers, and without one.
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
