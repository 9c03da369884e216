#include "speech/account/KeyStore.h"

#include <QtCore/QPointer>
#include <QtCore/QStringConverter>

#include "speech/account/KeychainHelper.h"

namespace orlenta::speech {

namespace {

QString keychainKey() {
    return QStringLiteral("elevenlabs_api_key");
}

/// Empty if the bytes aren't UTF-8.
QString keyFromBytes(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString key = decoder.decode(bytes);
    return decoder.hasError() ? QString() : key;
}

} // namespace

QCoro::Task<QString> KeyStore::read() {
    if (!m_sessionKey.isEmpty())
        co_return m_sessionKey;
    const auto stored = co_await m_credentials.read(keychainKey());
    co_return stored ? keyFromBytes(*stored) : QString();
}

QCoro::Task<base::Result<void, KeychainError>> KeyStore::keep(QString key) {
    const QPointer<KeyStore> self(this);
    m_sessionKey = key;
    const QByteArray secret = key.toUtf8();
    const auto saved = co_await m_credentials.save(keychainKey(), secret);
    if (self && saved && m_sessionKey == key)
        m_sessionKey.clear();
    co_return saved;
}

QCoro::Task<bool> KeyStore::forget() {
    m_sessionKey.clear();
    co_return co_await m_credentials.remove(keychainKey());
}

} // namespace orlenta::speech
