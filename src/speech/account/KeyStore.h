#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "speech/account/KeychainError.h"

namespace orlenta::speech {

class KeychainHelper;

/// Keeps the account's key between connections: in the keyring, or for this session where the keyring refuses it. Main
/// thread; the credentials outlive it.
class KeyStore final : public QObject {
    Q_OBJECT
public:
    explicit KeyStore(KeychainHelper &credentials) : m_credentials(credentials) {}

    /// The key kept last; empty when there is none or the keyring can't be read.
    QCoro::Task<QString> read();
    /// Keeps a key that works. On a failure of the keyring the key is kept for this session all the same.
    QCoro::Task<base::Result<void, KeychainError>> keep(QString key);
    /// Whether the keyring holds no key any more.
    QCoro::Task<bool> forget();

private:
    KeychainHelper &m_credentials;
    /// Set only while the keyring doesn't hold the key.
    QString m_sessionKey;
};

} // namespace orlenta::speech
