#include "speech/account/ElevenLabsService.h"

#include <algorithm>
#include <array>

#include <QtCore/QPointer>

#include "base/LogCategories.h"
#include "speech/http/ServiceGateway.h"
#include "speech/synthesis/SpeechApi.h"

namespace orlenta::speech {

ElevenLabsService::ElevenLabsService(base::UserDefaults &defaults, KeychainHelper &credentials, QObject *parent,
                                     SpeechTiming timing)
    : QObject(parent), m_gateway(std::make_unique<ServiceGateway>(timing)), m_accountApi(*m_gateway),
      m_keys(credentials), m_usage(timing,
                                   [this](QString label, CancellationPtr cancellation) {
                                       return refreshUsage(std::move(label), std::move(cancellation));
                                   }),
      m_speech(std::make_unique<SpeechApi>(*m_gateway, defaults, [this] { return supportsPCMOutput(); })) {
    connect(m_speech.get(), &SpeechApi::spent, this,
            [this](const ServiceAccess &payer, const QString &context, int characters, UsageEstimate estimate) {
                if (payer == access())
                    scheduleUsageRefresh(context, characters, estimate);
            });
}

ElevenLabsService::~ElevenLabsService() {
    // Awaiting coroutines resume here, while every member still exists.
    ++m_sessionEpoch;
    m_usage.reset();
    m_gateway->close();
}

QString ElevenLabsService::apiKey() const {
    return access().apiKey;
}

void ElevenLabsService::setApiKey(const QString &key) {
    changeAccess(access().endpoint, key);
}

const ServiceAccess &ElevenLabsService::access() const {
    return m_gateway->access();
}

std::optional<QSet<QString>> ElevenLabsService::availableVoiceIds() const {
    if (!m_isAuthenticated)
        return std::nullopt;
    QSet<QString> ids;
    for (const Voice &voice : m_voices)
        ids.insert(voice.voiceId);
    return ids;
}

bool ElevenLabsService::supportsPCMOutput() const {
    if (!m_user)
        return false;
    static constexpr std::array paidTiers{QLatin1String("pro"), QLatin1String("scale"), QLatin1String("business"),
                                          QLatin1String("enterprise")};
    const QString tier = m_user->subscription.tier.toLower();
    return std::any_of(paidTiers.begin(), paidTiers.end(), [&tier](QLatin1String paid) { return tier.contains(paid); });
}

QCoro::Task<void> ElevenLabsService::connectAccount(KeychainErrors keychainErrors) {
    const ServiceAccess payer = access();
    if (payer.apiKey.isEmpty())
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const int epoch = ++m_sessionEpoch;
    setLoading(true);
    setErrorMessage({});
    const auto user = co_await m_accountApi.fetchUser(payer);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!user) {
        failConnecting(user.error());
        co_return;
    }
    const auto voices = co_await m_accountApi.fetchVoices(payer);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!voices) {
        failConnecting(voices.error());
        co_return;
    }
    adopt(*user, *voices);
    co_await keepKey(payer.apiKey, epoch, keychainErrors);
    if (self && m_sessionEpoch == epoch)
        setLoading(false);
}

QCoro::Task<void> ElevenLabsService::connectStoredAccount() {
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const int epoch = m_sessionEpoch;
    const QString stored = co_await m_keys.read();
    // A key that the user typed meanwhile takes precedence.
    if (!self || stored.isEmpty() || m_sessionEpoch != epoch || !apiKey().isEmpty())
        co_return;
    setApiKey(stored);
    co_await connectAccount(KeychainErrors::Hide);
}

QCoro::Task<void> ElevenLabsService::disconnectAccount() {
    const QPointer<ElevenLabsService> self(this);
    forgetAccount(access().endpoint);
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const int epoch = m_sessionEpoch;
    const bool removed = co_await m_keys.forget();
    if (!self || m_sessionEpoch != epoch || removed)
        co_return;
    setErrorMessage(QStringLiteral("Couldn't remove the saved key from the Keychain. The app may reconnect "
                                   "automatically on next launch."));
}

QCoro::Task<void> ElevenLabsService::refreshAccount() {
    if (!m_isAuthenticated)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const ServiceAccess payer = access();
    const int epoch = m_sessionEpoch;
    const QString failed = QStringLiteral("Failed to refresh: ");
    const auto user = co_await m_accountApi.fetchUser(payer);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!user) {
        setErrorMessage(failed + user.error().description());
        co_return;
    }
    const auto voices = co_await m_accountApi.fetchVoices(payer);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!voices) {
        setErrorMessage(failed + voices.error().description());
        co_return;
    }
    setUser(*user);
    setVoices(*voices);
}

void ElevenLabsService::useEndpoint(const QUrl &baseUrl, KeyKeeping keeping) {
    m_keyKeeping = keeping;
    forgetAccount(baseUrl);
}

void ElevenLabsService::scheduleUsageRefresh(const QString &context, int characters, UsageEstimate estimate) {
    if (estimate == UsageEstimate::Apply) {
        if (auto estimated = m_usage.estimate(m_user, characters, context))
            setUser(std::move(estimated));
    }
    m_usage.startSeries(context);
}

QCoro::Task<void> ElevenLabsService::refreshUsage(QString label, CancellationPtr cancellation) {
    if (!m_isAuthenticated)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const ServiceAccess payer = access();
    const int epoch = m_sessionEpoch;
    const auto fetched = co_await m_accountApi.fetchUser(payer, cancellation);
    if (!self || cancellation->isCancelled())
        co_return;
    if (!fetched) {
        qCCritical(base::log::usage).noquote() << QStringLiteral("Failed to refresh ElevenLabs usage after %1: %2")
                                                      .arg(label, fetched.error().description());
        co_return;
    }
    if (m_sessionEpoch == epoch)
        setUser(m_usage.reconcile(m_user, *fetched));
}

QCoro::Task<void> ElevenLabsService::keepKey(QString key, int epoch, KeychainErrors keychainErrors) {
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const auto saved = co_await m_keys.keep(key);
    if (saved || !self)
        co_return;
    qCCritical(base::log::credentials).noquote()
        << QStringLiteral("Failed to save ElevenLabs API key to Keychain: %1").arg(saved.error().description());
    if (keychainErrors == KeychainErrors::Show && m_sessionEpoch == epoch)
        setErrorMessage(QStringLiteral("Couldn't save your API key to the keychain. Please try again."));
}

void ElevenLabsService::changeAccess(const QUrl &endpoint, const QString &key) {
    const ServiceAccess before = access();
    m_gateway->setAccess(endpoint, key);
    if (before == access())
        return;
    m_usage.reset();
    if (before.apiKey != key)
        Q_EMIT apiKeyChanged();
}

void ElevenLabsService::forgetAccount(const QUrl &endpoint) {
    ++m_sessionEpoch;
    changeAccess(endpoint, {});
    m_usage.reset();
    setAuthenticated(false);
    setLoading(false);
    setUser(std::nullopt);
    setVoices({});
    setErrorMessage({});
}

void ElevenLabsService::adopt(const ElevenLabsUser &user, const QList<Voice> &voices) {
    setUser(user);
    setVoices(voices);
    setAuthenticated(true);
    if (!voices.isEmpty())
        m_voiceSelection.selectVoice(voices.first().voiceId, voices.first().name, servicePalette().front());
}

void ElevenLabsService::failConnecting(const SpeechError &error) {
    // Cancelled means that another key was set meanwhile, and that its owner will connect.
    if (!error.isCancelled()) {
        setErrorMessage(error.description());
        setAuthenticated(false);
        setUser(std::nullopt);
        setVoices({});
    }
    setLoading(false);
}

void ElevenLabsService::setAuthenticated(bool value) {
    if (m_isAuthenticated == value)
        return;
    m_isAuthenticated = value;
    Q_EMIT isAuthenticatedChanged();
}

void ElevenLabsService::setLoading(bool value) {
    if (m_isLoading == value)
        return;
    m_isLoading = value;
    Q_EMIT isLoadingChanged();
}

void ElevenLabsService::setUser(std::optional<ElevenLabsUser> user) {
    if (m_user == user)
        return;
    m_user = std::move(user);
    Q_EMIT userChanged();
}

void ElevenLabsService::setVoices(const QList<Voice> &voices) {
    if (m_voices == voices)
        return;
    m_voices = voices;
    Q_EMIT voicesChanged();
}

void ElevenLabsService::setErrorMessage(const QString &message) {
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

} // namespace orlenta::speech
