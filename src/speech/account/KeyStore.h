#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "speech/account/KeychainError.h"

namespace orlenta::speech {

class KeychainHelper;

/// Saves the account's key in the keyring, or for this session if the keyring refuses it. Main thread; the credentials
/// outlive it.
class KeyStore final : public QObject {
    Q_OBJECT
public:
    explicit KeyStore(KeychainHelper &credentials) : m_credentials(credentials) {}

    /// The saved key; empty if there is none or the keyring can't be read.
    QCoro::Task<QString> read();
    /// Saves a working key. If the keyring fails, the key still lasts for this session.
    QCoro::Task<base::Result<void, KeychainError>> keep(QString key);
    /// Deletes the key. False if the keyring still holds it.
    QCoro::Task<bool> forget();

private:
    KeychainHelper &m_credentials;
    /// Set only while the keyring doesn't hold it.
    QString m_sessionKey;
};

} // namespace orlenta::speech
