#pragma once

#include <deque>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include "base/Result.h"
#include "speech/Completion.h"
#include "speech/KeychainError.h"
#include "speech/SpeechTiming.h"

namespace QKeychain {
class Job;
}

namespace orlenta::speech {

/// Secrets in the desktop's keyring. Operations run one after another in the order of their calls and none blocks: a
/// keyring may ask the user for a password meanwhile. Main thread; outlives the services that use it.
///
/// A locked keyring answers a lookup with "not found" and a removal with success, so both answers are believed only
/// when the keyring says that it is unlocked.
class CredentialStore final : public QObject {
    Q_OBJECT
public:
    explicit CredentialStore(QObject *parent = nullptr, SpeechTiming timing = {});
    ~CredentialStore() override;

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
    struct JobAnswer {
        int error = 0;
        QByteArray secret;
    };

    QCoro::Task<bool> takeTurn();
    void endTurn();
    QCoro::Task<JobAnswer> readJob(QString account);
    QCoro::Task<JobAnswer> run(QKeychain::Job *job, QString account);
    KeychainError report(KeychainError error, const QString &account);

    SpeechTiming m_timing;
    bool m_busy = false;
    std::deque<Completion<bool>> m_waiting;
    QList<Completion<int>> m_running;
};

} // namespace orlenta::speech
