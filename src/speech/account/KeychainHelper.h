#pragma once

#include <deque>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include "base/Result.h"
#include "speech/account/KeychainError.h"
#include "speech/http/Completion.h"
#include "speech/http/SpeechTiming.h"

namespace QKeychain {
class Job;
}

namespace orlenta::speech {

/// Secrets in the desktop's keyring. Operations run one at a time, in call order, and never block: the keyring may have
/// to ask the user for a password. Main thread; outlives the services that use it.
///
/// A locked keyring answers a lookup with "not found" and a removal with success. Both answers are therefore checked
/// against the keyring's list of items, which is readable while locked.
class KeychainHelper final : public QObject {
    Q_OBJECT
public:
    explicit KeychainHelper(QObject *parent = nullptr, SpeechTiming timing = {});
    ~KeychainHelper() override;

    /// The secret of `account`; none if there is none or the keyring can't be read.
    QCoro::Task<std::optional<QByteArray>> read(QString account);
    /// Adds or replaces the secret of `account`.
    QCoro::Task<base::Result<void, KeychainError>> save(QString account, QByteArray secret);
    /// Removes the secret of `account`. True if none is left, even if there was none.
    QCoro::Task<bool> remove(QString account);

Q_SIGNALS:
    /// A failed operation, for the crash report: category "keychain", level error, never a secret.
    void breadcrumb(const QString &message, const QVariantMap &data);

private:
    /// The outcome of a keyring library operation: its error number or 0, and the secret read.
    struct Answer {
        int error = 0;
        QByteArray secret;
    };
    /// The state of a secret in the keyring's list; Unknown if the list can't be read.
    enum class Presence { Absent, Unlocked, Locked, Unknown };

    QCoro::Task<bool> takeTurn();
    void endTurn();
    QCoro::Task<Presence> presence(QString account);
    QCoro::Task<Answer> run(QKeychain::Job *job, QString account);
    QCoro::Task<Answer> await(Completion<Answer> completion);
    KeychainError report(KeychainError::Operation operation, int status, const QString &account);

    SpeechTiming m_timing;
    bool m_busy = false;
    std::deque<Completion<bool>> m_waiting;
    QList<Completion<Answer>> m_running;
};

} // namespace orlenta::speech
