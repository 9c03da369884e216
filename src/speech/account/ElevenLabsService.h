#pragma once

#include <memory>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QUrl>

#include "base/Result.h"
#include "base/UserDefaults.h"
#include "speech/account/ServiceColor.h"
#include "speech/account/ServiceRecords.h"
#include "speech/http/Cancellation.h"
#include "speech/http/SpeechError.h"
#include "speech/http/SpeechTiming.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {

class KeychainHelper;
class ServiceGateway;
class SpeechApi;
class UsageTracker;

/// The client of the speech service: the account's key, its user and voices, and the way to its requests. Main thread;
/// the defaults and the credential store outlive it. A result that comes after a newer connect or a sign-out is
/// dropped, which sessionEpoch() tells.
///
/// connectAccount() and disconnectAccount() carry "Account" because QObject has a connect() of its own.
class ElevenLabsService final : public QObject {
    Q_OBJECT
public:
    /// Whether a key that could not be saved is told to the user.
    enum class KeychainErrors { Show, Hide };
    /// Where a key that works is kept: in the keyring, or only as long as this object lives.
    enum class KeyKeeping { Keyring, SessionOnly };
    /// Whether a request's expected cost shows at once.
    enum class UsageEstimate { Apply, Skip };

    ElevenLabsService(base::UserDefaults &defaults, KeychainHelper &credentials, QObject *parent = nullptr,
                      SpeechTiming timing = {});
    ~ElevenLabsService() override;

    /// The key in use; empty means not configured.
    [[nodiscard]] QString apiKey() const { return m_apiKey; }
    void setApiKey(const QString &key);
    [[nodiscard]] bool isAuthenticated() const { return m_isAuthenticated; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    /// The last snapshot of the account, maybe with a local estimate in its count.
    [[nodiscard]] const std::optional<ElevenLabsUser> &user() const { return m_user; }
    [[nodiscard]] const QList<Voice> &voices() const { return m_voices; }
    /// None when nobody is signed in.
    [[nodiscard]] std::optional<QSet<QString>> availableVoiceIds() const;
    /// What stands below the key field; null when there is nothing to say.
    [[nodiscard]] QString errorMessage() const { return m_errorMessage; }
    /// "<count> credits", or null without a user.
    [[nodiscard]] QString creditsText() const;
    /// Whether the plan's name speaks for uncompressed audio.
    [[nodiscard]] bool supportsPCMOutput() const;
    [[nodiscard]] int sessionEpoch() const { return m_sessionEpoch; }

    /// The voice picked in the inspector; an empty id means none.
    [[nodiscard]] QString selectedVoiceId() const { return m_selectedVoiceId; }
    [[nodiscard]] QString selectedVoiceName() const { return m_selectedVoiceName; }
    [[nodiscard]] ServiceColor selectedVoiceColor() const { return m_selectedVoiceColor; }
    void selectVoice(const QString &id, const QString &name, const ServiceColor &color);
    /// The sliders' values where no line has its own.
    [[nodiscard]] VoiceSettings voiceSettings() const { return m_voiceSettings; }
    void setVoiceSettings(const VoiceSettings &settings);

    /// Fetches user and voices with apiKey() and keeps the key once it has worked. Does nothing without a key.
    QCoro::Task<void> connectAccount(KeychainErrors keychainErrors);
    /// Connects silently with the key in the keyring, if there is one: the start of every service.
    QCoro::Task<void> connectStoredAccount();
    /// Signs out and forgets the key, in the keyring too.
    QCoro::Task<void> disconnectAccount();
    /// Fetches user and voices again; a failure leaves the connection as it was.
    QCoro::Task<void> refreshAccount();
    /// Talks to another address from now on, signed out. A running exchange's account result is dropped; the keyring's
    /// key stays where it is.
    void useEndpoint(const QUrl &baseUrl, KeyKeeping keeping = KeyKeeping::SessionOnly);
    [[nodiscard]] QUrl baseURL() const;

    QCoro::Task<base::Result<ElevenLabsUser, SpeechError>> fetchUser(QString apiKey,
                                                                     CancellationPtr cancellation = nullptr);
    QCoro::Task<base::Result<QList<Voice>, SpeechError>> fetchVoices(QString apiKey);
    /// Counts `characters` as spent until the service's own count follows, unless told to skip that, and has the
    /// service's count looked at about 0, 1.5, 5, 15 and 30 seconds from now. `context` names the request in the log.
    void scheduleUsageRefresh(const QString &context, int characters, UsageEstimate estimate);

    /// Speech and dictionaries.
    [[nodiscard]] SpeechApi &speech() const { return *m_speech; }
    /// The gateway that every request goes through, with its retries.
    [[nodiscard]] ServiceGateway &gateway() const { return *m_gateway; }

Q_SIGNALS:
    void apiKeyChanged();
    void isAuthenticatedChanged();
    void isLoadingChanged();
    void userChanged();
    void voicesChanged();
    void errorMessageChanged();
    void selectedVoiceChanged();
    void voiceSettingsChanged();

private:
    void setAuthenticated(bool value);
    void setLoading(bool value);
    void setUser(std::optional<ElevenLabsUser> user);
    void setVoices(const QList<Voice> &voices);
    void setErrorMessage(const QString &message);
    void forgetAccount();
    void adopt(const ElevenLabsUser &user, const QList<Voice> &voices);
    void failConnecting(const SpeechError &error);
    QCoro::Task<void> keepKey(QString key, int epoch, KeychainErrors keychainErrors);
    QCoro::Task<void> refreshUsage(QString label, CancellationPtr cancellation);

    KeychainHelper &m_credentials;
    std::unique_ptr<ServiceGateway> m_gateway;
    std::unique_ptr<UsageTracker> m_usage;
    std::unique_ptr<SpeechApi> m_speech;
    KeyKeeping m_keyKeeping = KeyKeeping::Keyring;
    QString m_apiKey;
    bool m_isAuthenticated = false;
    bool m_isLoading = false;
    std::optional<ElevenLabsUser> m_user;
    QList<Voice> m_voices;
    QString m_errorMessage;
    int m_sessionEpoch = 0;
    QString m_selectedVoiceId;
    QString m_selectedVoiceName;
    ServiceColor m_selectedVoiceColor;
    VoiceSettings m_voiceSettings;
};

} // namespace orlenta::speech
