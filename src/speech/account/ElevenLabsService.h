#pragma once

#include <memory>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QUrl>

#include "base/UserDefaults.h"
#include "speech/account/AccountApi.h"
#include "speech/account/KeyStore.h"
#include "speech/account/ServiceRecords.h"
#include "speech/account/UsageTracker.h"
#include "speech/account/VoiceSelection.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechError.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

class ServiceGateway;
class SpeechApi;

/// The account at the speech service: sign-in and sign-out, user and voices, and access to the speech requests. Main
/// thread; the defaults and the credential store outlive it. Results that arrive after a newer connect or a sign-out
/// are dropped; sessionEpoch() tells them apart.
///
/// connectAccount() and disconnectAccount() carry "Account" because QObject has a connect() of its own.
class ElevenLabsService final : public QObject {
    Q_OBJECT
public:
    /// Whether the user is told when the key can't be saved.
    enum class KeychainErrors { Show, Hide };
    /// Where a working key is kept: in the keyring, or nowhere if its service ends with this program.
    enum class KeyKeeping { Keyring, SessionOnly };

    ElevenLabsService(base::UserDefaults &defaults, KeychainHelper &credentials, QObject *parent = nullptr,
                      SpeechTiming timing = {});
    ~ElevenLabsService() override;

    /// The key in use; empty means not configured.
    [[nodiscard]] QString apiKey() const;
    void setApiKey(const QString &key);
    /// The endpoint and key that a new request uses.
    [[nodiscard]] const ServiceAccess &access() const;
    [[nodiscard]] bool isAuthenticated() const { return m_isAuthenticated; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    /// The last snapshot of the account, possibly with a local estimate in its count.
    [[nodiscard]] const std::optional<ElevenLabsUser> &user() const { return m_user; }
    [[nodiscard]] const QList<Voice> &voices() const { return m_voices; }
    /// None when nobody is signed in.
    [[nodiscard]] std::optional<QSet<QString>> availableVoiceIds() const;
    /// The message below the key field; null if there is none.
    [[nodiscard]] QString errorMessage() const { return m_errorMessage; }
    /// Whether the plan's name suggests uncompressed audio.
    [[nodiscard]] bool supportsPCMOutput() const;
    [[nodiscard]] int sessionEpoch() const { return m_sessionEpoch; }

    /// Fetches user and voices with apiKey() and saves the key if that works. Does nothing without a key.
    QCoro::Task<void> connectAccount(KeychainErrors keychainErrors);
    /// Connects with the saved key, if there is one, without showing keyring errors.
    QCoro::Task<void> connectStoredAccount();
    /// Signs out and deletes the key, also from the keyring.
    QCoro::Task<void> disconnectAccount();
    /// Fetches user and voices again; a failure leaves the connection as it was.
    QCoro::Task<void> refreshAccount();
    /// Signs out and switches to another address. The saved key stays saved.
    void useEndpoint(const QUrl &baseUrl, KeyKeeping keeping = KeyKeeping::SessionOnly);
    /// Adds `characters` to the count at once, unless the estimate is skipped, and fetches the service's count about
    /// 0, 1.5, 5, 15 and 30 seconds from now. `context` names the request in the log.
    void scheduleUsageRefresh(const QString &context, int characters, UsageEstimate estimate);

    [[nodiscard]] VoiceSelection &voiceSelection() { return m_voiceSelection; }
    /// The requests for speech and dictionaries.
    [[nodiscard]] SpeechApi &speech() const { return *m_speech; }

Q_SIGNALS:
    void apiKeyChanged();
    void isAuthenticatedChanged();
    void isLoadingChanged();
    void userChanged();
    void voicesChanged();
    void errorMessageChanged();

private:
    void setAuthenticated(bool value);
    void setLoading(bool value);
    void setUser(std::optional<ElevenLabsUser> user);
    void setVoices(const QList<Voice> &voices);
    void setErrorMessage(const QString &message);
    void changeAccess(const QUrl &endpoint, const QString &key);
    void forgetAccount(const QUrl &endpoint);
    void adopt(const ElevenLabsUser &user, const QList<Voice> &voices);
    void failConnecting(const SpeechError &error);
    QCoro::Task<void> keepKey(QString key, int epoch, KeychainErrors keychainErrors);
    QCoro::Task<void> refreshUsage(QString label, CancellationPtr cancellation);

    std::unique_ptr<ServiceGateway> m_gateway;
    AccountApi m_accountApi;
    KeyStore m_keys;
    UsageTracker m_usage;
    std::unique_ptr<SpeechApi> m_speech;
    VoiceSelection m_voiceSelection;
    KeyKeeping m_keyKeeping = KeyKeeping::Keyring;
    bool m_isAuthenticated = false;
    bool m_isLoading = false;
    std::optional<ElevenLabsUser> m_user;
    QList<Voice> m_voices;
    QString m_errorMessage;
    int m_sessionEpoch = 0;
};

} // namespace orlenta::speech
