#include "speech/CredentialStore.h"

#include <memory>

#include <qt6keychain/keychain.h>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusObjectPath>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include "base/LogCategories.h"

namespace orlenta::speech {

namespace {

using ItemPaths = QList<QDBusObjectPath>;
using ItemAttributes = QMap<QString, QString>;

constexpr int keyringCallTimeout = 5000;

QString keychainService() {
    return QStringLiteral("com.orlenta.elevenlabs");
}

struct LaterDeleter {
    void operator()(QObject *object) const { object->deleteLater(); }
};

} // namespace

CredentialStore::CredentialStore(QObject *parent, SpeechTiming timing) : QObject(parent), m_timing(std::move(timing)) {}

CredentialStore::~CredentialStore() {
    for (const Completion<int> &running : QList(m_running))
        running.resolve(QKeychain::OtherError);
    while (!m_waiting.empty())
        endTurn();
}

QCoro::Task<std::optional<QByteArray>> CredentialStore::read(QString account) {
    const QPointer<CredentialStore> self(this);
    if (!co_await takeTurn())
        co_return std::nullopt;
    const std::unique_ptr<QKeychain::ReadPasswordJob, LaterDeleter> job(
        new QKeychain::ReadPasswordJob(keychainService()));
    const int error = co_await run(job.get(), account);
    if (!self)
        co_return std::nullopt;
    std::optional<QByteArray> secret;
    if (error == QKeychain::NoError)
        secret = job->binaryData();
    else if (error != QKeychain::EntryNotFound)
        report(KeychainError::Operation::Read, error, account);
    else if (co_await presence(account) == Presence::Locked && self)
        report(KeychainError::Operation::Read, QKeychain::AccessDenied, account);
    if (self)
        endTurn();
    co_return secret;
}

QCoro::Task<base::Result<void, KeychainError>> CredentialStore::save(QString account, QByteArray secret) {
    const QPointer<CredentialStore> self(this);
    const KeychainError lost{KeychainError::Operation::SaveUpdate, QKeychain::OtherError};
    if (!co_await takeTurn())
        co_return base::fail(lost);
    const Presence before = co_await presence(account);
    if (!self)
        co_return base::fail(lost);
    const std::unique_ptr<QKeychain::WritePasswordJob, LaterDeleter> job(
        new QKeychain::WritePasswordJob(keychainService()));
    job->setBinaryData(secret);
    const int error = co_await run(job.get(), account);
    if (!self)
        co_return base::fail(lost);
    endTurn();
    if (error == QKeychain::NoError)
        co_return base::Result<void, KeychainError>();
    const bool existed = before == Presence::Unlocked || before == Presence::Locked;
    co_return base::fail(
        report(existed ? KeychainError::Operation::SaveUpdate : KeychainError::Operation::SaveAdd, error, account));
}

QCoro::Task<bool> CredentialStore::remove(QString account) {
    const QPointer<CredentialStore> self(this);
    if (!co_await takeTurn())
        co_return false;
    const std::unique_ptr<QKeychain::DeletePasswordJob, LaterDeleter> job(
        new QKeychain::DeletePasswordJob(keychainService()));
    int error = co_await run(job.get(), account);
    if (!self)
        co_return false;
    if (error == QKeychain::EntryNotFound)
        error = QKeychain::NoError;
    const Presence after = co_await presence(account);
    if (!self)
        co_return false;
    if (error == QKeychain::NoError && (after == Presence::Unlocked || after == Presence::Locked))
        error = QKeychain::AccessDenied;
    if (error != QKeychain::NoError)
        report(KeychainError::Operation::Delete, error, account);
    endTurn();
    co_return error == QKeychain::NoError;
}

QCoro::Task<bool> CredentialStore::takeTurn() {
    if (!m_busy) {
        m_busy = true;
        co_return true;
    }
    const QPointer<CredentialStore> self(this);
    const Completion<bool> turn;
    m_waiting.push_back(turn);
    co_await turn;
    co_return !self.isNull();
}

void CredentialStore::endTurn() {
    if (m_waiting.empty()) {
        m_busy = false;
        return;
    }
    const Completion<bool> next = m_waiting.front();
    m_waiting.pop_front();
    next.resolve(true);
}

QCoro::Task<CredentialStore::Presence> CredentialStore::presence(QString account) {
    static const int attributesType = qDBusRegisterMetaType<ItemAttributes>().id();
    Q_UNUSED(attributesType)
    QDBusMessage search = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("SearchItems"));
    // The names under which the keyring library files service and account.
    const ItemAttributes attributes{{QStringLiteral("server"), keychainService()}, {QStringLiteral("user"), account}};
    search << QVariant::fromValue(attributes);
    QDBusPendingReply<ItemPaths, ItemPaths> reply = QDBusConnection::sessionBus().asyncCall(search, keyringCallTimeout);
    if (!reply.isFinished()) {
        const Completion<int> answered;
        const auto watcher = std::make_unique<QDBusPendingCallWatcher>(reply);
        connect(watcher.get(), &QDBusPendingCallWatcher::finished, watcher.get(), [answered] { answered.resolve(0); });
        co_await await(answered);
    }
    if (!reply.isFinished() || reply.isError())
        co_return Presence::Unknown;
    if (!reply.argumentAt<1>().isEmpty())
        co_return Presence::Locked;
    co_return reply.argumentAt<0>().isEmpty() ? Presence::Absent : Presence::Unlocked;
}

QCoro::Task<int> CredentialStore::run(QKeychain::Job *job, QString account) {
    const Completion<int> finished;
    job->setAutoDelete(false);
    job->setKey(account);
    connect(job, &QKeychain::Job::finished, job, [finished](QKeychain::Job *done) { finished.resolve(done->error()); });
    QTimer guard;
    guard.setSingleShot(true);
    connect(&guard, &QTimer::timeout, &guard, [finished] { finished.resolve(QKeychain::OtherError); });
    guard.start(m_timing.keyringTimeout);
    job->start();
    co_return co_await await(finished);
}

QCoro::Task<int> CredentialStore::await(Completion<int> completion) {
    const QPointer<CredentialStore> self(this);
    m_running.append(completion);
    const int value = co_await completion;
    if (self)
        m_running.removeIf([&completion](const Completion<int> &running) { return running.isSameAs(completion); });
    co_return value;
}

KeychainError CredentialStore::report(KeychainError::Operation operation, int status, const QString &account) {
    const QString name = rawValue(operation);
    const QString message = QStringLiteral("Keychain %1 failed").arg(name);
    qCWarning(base::log::credentials).noquote() << message << "with status" << status;
    Q_EMIT breadcrumb(message, {{QStringLiteral("operation"), name},
                                {QStringLiteral("status"), status},
                                {QStringLiteral("service"), keychainService()},
                                {QStringLiteral("account"), account}});
    return {operation, status};
}

} // namespace orlenta::speech
