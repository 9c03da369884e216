#include "speech/account/ElevenLabsService.h"

#include <array>

#include <QtCore/QPointer>
#include <QtCore/QStringConverter>

#include "base/LogCategories.h"
#include "speech/account/KeychainHelper.h"
#include "speech/account/ServiceAddresses.h"
#include "speech/account/UsageTracker.h"
#include "speech/http/ServiceGateway.h"
#include "speech/synthesis/SpeechApi.h"

namespace orlenta::speech {

namespace {

QString keychainKey() {
    return QStringLiteral("elevenlabs_api_key");
}

/// The key that `bytes` spell; empty when they are not UTF-8.
QString keyFromBytes(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString key = decoder.decode(bytes);
    return decoder.hasError() ? QString() : key;
}

} // namespace

ElevenLabsService::ElevenLabsService(base::UserDefaults &defaults, KeychainHelper &credentials, QObject *parent,
                                     SpeechTiming timing)
    : QObject(parent), m_credentials(credentials), m_gateway(std::make_unique<ServiceGateway>(timing)),
      m_usage(std::make_unique<UsageTracker>(timing,
                                             [this](QString label, CancellationPtr cancellation) {
                                                 return refreshUsage(std::move(label), std::move(cancellation));
                                             })),
      m_speech(std::make_unique<SpeechApi>(*this, defaults)), m_selectedVoiceName(QStringLiteral("Voice 1")),
      m_selectedVoiceColor(servicePalette().at(1)) {}

ElevenLabsService::~ElevenLabsService() {
    // Whoever waits for a reply goes on here, while everything still stands.
    ++m_sessionEpoch;
    m_usage->reset();
    m_gateway->close();
}

std::optional<QSet<QString>> ElevenLabsService::availableVoiceIds() const {
    if (!m_isAuthenticated)
        return std::nullopt;
    QSet<QString> ids;
    for (const Voice &voice : m_voices)
        ids.insert(voice.voiceId);
    return ids;
}

QString ElevenLabsService::creditsText() const {
    return m_user ? QStringLiteral("%1 credits").arg(m_user->subscription.characterCount) : QString();
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
    if (m_apiKey.isEmpty())
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const QString key = m_apiKey;
    const int epoch = ++m_sessionEpoch;
    setLoading(true);
    setErrorMessage({});
    auto user = co_await fetchUser(key);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!user) {
        failConnecting(user.error());
        co_return;
    }
    auto voices = co_await fetchVoices(key);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!voices) {
        failConnecting(voices.error());
        co_return;
    }
    adopt(*user, *voices);
    co_await keepKey(key, epoch, keychainErrors);
    if (self && m_sessionEpoch == epoch)
        setLoading(false);
}

QCoro::Task<void> ElevenLabsService::connectStoredAccount() {
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const int epoch = m_sessionEpoch;
    const auto stored = co_await m_credentials.read(keychainKey());
    // A key that was typed meanwhile goes first.
    if (!self || !stored || m_sessionEpoch != epoch || !m_apiKey.isEmpty())
        co_return;
    setApiKey(keyFromBytes(*stored));
    co_await connectAccount(KeychainErrors::Hide);
}

QCoro::Task<void> ElevenLabsService::disconnectAccount() {
    const QPointer<ElevenLabsService> self(this);
    forgetAccount();
    setErrorMessage({});
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const int epoch = m_sessionEpoch;
    const bool removed = co_await m_credentials.remove(keychainKey());
    if (!self || m_sessionEpoch != epoch || removed)
        co_return;
    setErrorMessage(QStringLiteral("Couldn't remove the saved key from the Keychain. The app may reconnect "
                                   "automatically on next launch."));
}

QCoro::Task<void> ElevenLabsService::refreshAccount() {
    if (!m_isAuthenticated)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const int epoch = m_sessionEpoch;
    const QString failed = QStringLiteral("Failed to refresh: ");
    auto user = co_await fetchUser(m_apiKey);
    if (!self || m_sessionEpoch != epoch)
        co_return;
    if (!user) {
        setErrorMessage(failed + user.error().description());
        co_return;
    }
    auto voices = co_await fetchVoices(m_apiKey);
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
    forgetAccount();
    setErrorMessage({});
    m_keyKeeping = keeping;
    m_gateway->setBaseURL(baseUrl);
}

QUrl ElevenLabsService::baseURL() const {
    return m_gateway->baseURL();
}

QCoro::Task<base::Result<ElevenLabsUser, SpeechError>> ElevenLabsService::fetchUser(QString apiKey,
                                                                                    CancellationPtr cancellation) {
    auto bytes = co_await m_gateway->get(QStringLiteral("/v1/user"), apiKey, cancellation);
    if (!bytes)
        co_return base::fail(bytes.error());
    co_return ElevenLabsUser::fromJson(*bytes);
}

QCoro::Task<base::Result<QList<Voice>, SpeechError>> ElevenLabsService::fetchVoices(QString apiKey) {
    auto bytes = co_await m_gateway->get(QStringLiteral("/v1/voices"), apiKey);
    if (!bytes)
        co_return base::fail(bytes.error());
    auto response = VoicesResponse::fromJson(*bytes);
    if (!response)
        co_return base::fail(response.error());
    co_return response->voices;
}

void ElevenLabsService::scheduleUsageRefresh(const QString &context, int characters, UsageEstimate estimate) {
    if (estimate == UsageEstimate::Apply) {
        if (auto estimated = m_usage->estimate(m_user, characters, context))
            setUser(std::move(estimated));
    }
    m_usage->startSeries(context);
}

QCoro::Task<void> ElevenLabsService::refreshUsage(QString label, CancellationPtr cancellation) {
    if (!m_isAuthenticated)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const int epoch = m_sessionEpoch;
    auto fetched = co_await fetchUser(m_apiKey, cancellation);
    if (!self || cancellation->isCancelled())
        co_return;
    if (!fetched) {
        qCCritical(base::log::usage).noquote() << QStringLiteral("Failed to refresh ElevenLabs usage after %1: %2")
                                                      .arg(label, fetched.error().description());
        co_return;
    }
    if (m_sessionEpoch == epoch)
        setUser(m_usage->reconcile(m_user, *fetched));
}

QCoro::Task<void> ElevenLabsService::keepKey(QString key, int epoch, KeychainErrors keychainErrors) {
    if (m_keyKeeping != KeyKeeping::Keyring)
        co_return;
    const QPointer<ElevenLabsService> self(this);
    const QByteArray secret = key.toUtf8();
    const auto saved = co_await m_credentials.save(keychainKey(), secret);
    if (saved || !self)
        co_return;
    qCCritical(base::log::credentials).noquote()
        << QStringLiteral("Failed to save ElevenLabs API key to Keychain: %1").arg(saved.error().description());
    if (keychainErrors == KeychainErrors::Show && m_sessionEpoch == epoch)
        setErrorMessage(QStringLiteral("Couldn't save your API key to the keychain. Please try again."));
}

void ElevenLabsService::forgetAccount() {
    ++m_sessionEpoch;
    m_usage->reset();
    setApiKey({});
    setAuthenticated(false);
    setLoading(false);
    setUser(std::nullopt);
    setVoices({});
}

void ElevenLabsService::adopt(const ElevenLabsUser &user, const QList<Voice> &voices) {
    setUser(user);
    setVoices(voices);
    setAuthenticated(true);
    if (!voices.isEmpty())
        selectVoice(voices.first().voiceId, voices.first().name, servicePalette().front());
}

void ElevenLabsService::failConnecting(const SpeechError &error) {
    setErrorMessage(error.description());
    setAuthenticated(false);
    setUser(std::nullopt);
    setVoices({});
    setLoading(false);
}

void ElevenLabsService::selectVoice(const QString &id, const QString &name, const ServiceColor &color) {
    if (m_selectedVoiceId == id && m_selectedVoiceName == name && m_selectedVoiceColor == color)
        return;
    m_selectedVoiceId = id;
    m_selectedVoiceName = name;
    m_selectedVoiceColor = color;
    Q_EMIT selectedVoiceChanged();
}

void ElevenLabsService::setVoiceSettings(const VoiceSettings &settings) {
    if (m_voiceSettings == settings)
        return;
    m_voiceSettings = settings;
    Q_EMIT voiceSettingsChanged();
}

void ElevenLabsService::setApiKey(const QString &key) {
    if (m_apiKey == key)
        return;
    m_apiKey = key;
    Q_EMIT apiKeyChanged();
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
