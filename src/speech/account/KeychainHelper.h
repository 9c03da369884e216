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

/// Secrets in the desktop's keyring. Operations run one after another in the order of their calls and none blocks: a
/// keyring may ask the user for a password meanwhile. Main thread; outlives the services that use it.
///
/// A locked keyring answers a lookup with "not found" and a removal with success, so both answers are believed only
/// when the keyring's list of items, which needs no unlocking, agrees.
class KeychainHelper final : public QObject {
    Q_OBJECT
public:
    explicit KeychainHelper(QObject *parent = nullptr, SpeechTiming timing = {});
    ~KeychainHelper() override;

    /// The secret of `account`, or none when there is none or the keyring can't tell.
    QCoro::Task<std::optional<QByteArray>> read(QString account);
    /// Replaces the secret of `account`, or adds it.
    QCoro::Task<base::Result<void, KeychainError>> save(QString account, QByteArray secret);
    /// Whether `account` has no secret any more; one that had none counts.
    QCoro::Task<bool> remove(QString account);

Q_SIGNALS:
    /// A keyring operation failed: what a crash report keeps of it. Category "keychain", level error; never a secret.
    void breadcrumb(const QString &message, const QVariantMap &data);

private:
    /// How an operation of the keyring library ended: its error number, or 0, and what was read.
    struct Answer {
        int error = 0;
        QByteArray secret;
    };
    /// What the keyring's list says about one secret; Unknown when there is no list.
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
