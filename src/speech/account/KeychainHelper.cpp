#include "speech/account/KeychainHelper.h"

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

} // namespace

KeychainHelper::KeychainHelper(QObject *parent, SpeechTiming timing) : QObject(parent), m_timing(std::move(timing)) {}

KeychainHelper::~KeychainHelper() {
    const Answer lost{QKeychain::OtherError, {}};
    for (const Completion<Answer> &running : QList(m_running))
        running.resolve(lost);
    while (!m_waiting.empty())
        endTurn();
}

QCoro::Task<std::optional<QByteArray>> KeychainHelper::read(QString account) {
    const QPointer<KeychainHelper> self(this);
    if (!co_await takeTurn())
        co_return std::nullopt;
    auto *job = new QKeychain::ReadPasswordJob(keychainService());
    const Answer answer = co_await run(job, account);
    if (!self)
        co_return std::nullopt;
    std::optional<QByteArray> secret;
    if (answer.error == QKeychain::NoError)
        secret = answer.secret;
    else if (answer.error != QKeychain::EntryNotFound)
        report(KeychainError::Operation::Read, answer.error, account);
    else if (co_await presence(account) == Presence::Locked && self)
        report(KeychainError::Operation::Read, QKeychain::AccessDenied, account);
    if (self)
        endTurn();
    co_return secret;
}

QCoro::Task<base::Result<void, KeychainError>> KeychainHelper::save(QString account, QByteArray secret) {
    const QPointer<KeychainHelper> self(this);
    const KeychainError lost{KeychainError::Operation::SaveUpdate, QKeychain::OtherError};
    if (!co_await takeTurn())
        co_return base::fail(lost);
    const Presence before = co_await presence(account);
    if (!self)
        co_return base::fail(lost);
    auto *job = new QKeychain::WritePasswordJob(keychainService());
    job->setBinaryData(secret);
    const Answer answer = co_await run(job, account);
    if (!self)
        co_return base::fail(lost);
    endTurn();
    if (answer.error == QKeychain::NoError)
        co_return base::Result<void, KeychainError>();
    const bool existed = before == Presence::Unlocked || before == Presence::Locked;
    co_return base::fail(report(existed ? KeychainError::Operation::SaveUpdate : KeychainError::Operation::SaveAdd,
                                answer.error, account));
}

QCoro::Task<bool> KeychainHelper::remove(QString account) {
    const QPointer<KeychainHelper> self(this);
    if (!co_await takeTurn())
        co_return false;
    auto *job = new QKeychain::DeletePasswordJob(keychainService());
    const Answer answer = co_await run(job, account);
    if (!self)
        co_return false;
    int error = answer.error == QKeychain::EntryNotFound ? QKeychain::NoError : answer.error;
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

QCoro::Task<bool> KeychainHelper::takeTurn() {
    if (!m_busy) {
        m_busy = true;
        co_return true;
    }
    const QPointer<KeychainHelper> self(this);
    const Completion<bool> turn;
    m_waiting.push_back(turn);
    co_await turn;
    co_return !self.isNull();
}

void KeychainHelper::endTurn() {
    if (m_waiting.empty()) {
        m_busy = false;
        return;
    }
    const Completion<bool> next = m_waiting.front();
    m_waiting.pop_front();
    next.resolve(true);
}

QCoro::Task<KeychainHelper::Presence> KeychainHelper::presence(QString account) {
    static const int attributesType = qDBusRegisterMetaType<ItemAttributes>().id();
    Q_UNUSED(attributesType)
    QDBusMessage search = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("SearchItems"));
    // The attribute names that the keyring library uses for service and account.
    const ItemAttributes attributes{{QStringLiteral("server"), keychainService()}, {QStringLiteral("user"), account}};
    search << QVariant::fromValue(attributes);
    QDBusPendingReply<ItemPaths, ItemPaths> reply = QDBusConnection::sessionBus().asyncCall(search, keyringCallTimeout);
    if (!reply.isFinished()) {
        const Completion<Answer> answered;
        const auto watcher = std::make_unique<QDBusPendingCallWatcher>(reply);
        connect(watcher.get(), &QDBusPendingCallWatcher::finished, watcher.get(), [answered] { answered.resolve({}); });
        co_await await(answered);
    }
    if (!reply.isFinished() || reply.isError())
        co_return Presence::Unknown;
    if (!reply.argumentAt<1>().isEmpty())
        co_return Presence::Locked;
    co_return reply.argumentAt<0>().isEmpty() ? Presence::Absent : Presence::Unlocked;
}

QCoro::Task<KeychainHelper::Answer> KeychainHelper::run(QKeychain::Job *job, QString account) {
    const Completion<Answer> finished;
    job->setKey(account);
    connect(job, &QKeychain::Job::finished, job, [finished](QKeychain::Job *done) {
        const auto *lookup = qobject_cast<QKeychain::ReadPasswordJob *>(done);
        finished.resolve({done->error(), lookup ? lookup->binaryData() : QByteArray()});
    });
    // Don't delete the job: it deletes itself when it ends, and the library may still answer one that timed out.
    QTimer guard;
    guard.setSingleShot(true);
    connect(&guard, &QTimer::timeout, &guard, [finished] { finished.resolve({QKeychain::OtherError, {}}); });
    guard.start(m_timing.keyringTimeout);
    job->start();
    const Answer answer = co_await await(finished);
    co_return answer;
}

QCoro::Task<KeychainHelper::Answer> KeychainHelper::await(Completion<Answer> completion) {
    const QPointer<KeychainHelper> self(this);
    m_running.append(completion);
    const Answer answer = co_await completion;
    if (self)
        m_running.removeIf([&completion](const Completion<Answer> &running) { return running.isSameAs(completion); });
    co_return answer;
}

KeychainError KeychainHelper::report(KeychainError::Operation operation, int status, const QString &account) {
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
