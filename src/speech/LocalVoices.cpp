#include "speech/LocalVoices.h"

#include <utility>

#include "base/UserDefaults.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/ServiceAddresses.h"
#include "speech/LocalVoicesProcess.h"

namespace orlenta::speech {

LocalVoices::LocalVoices(base::UserDefaults &defaults, std::unique_ptr<LocalVoicesProcess> process, QObject *parent)
    : QObject(parent), m_defaults(defaults), m_process(std::move(process)) {
    connect(m_process.get(), &LocalVoicesProcess::ready, this, &LocalVoices::takeAddress);
    connect(m_process.get(), &LocalVoicesProcess::failed, this, &LocalVoices::takeFailure);
}

LocalVoices::~LocalVoices() = default;

void LocalVoices::attach(ElevenLabsService &service) {
    m_services.removeAll(nullptr);
    m_services.append(&service);
    connectService(service);
}

void LocalVoices::restoreChoice() {
    if (m_defaults.useLocalVoices())
        switchOn();
}

void LocalVoices::switchOn() {
    if (m_state == State::Starting || m_state == State::On)
        return;
    m_defaults.setUseLocalVoices(true);
    m_failureReason.clear();
    setState(State::Starting);
    m_process->start();
}

void LocalVoices::switchOff() {
    m_defaults.setUseLocalVoices(false);
    m_failureReason.clear();
    if (m_state == State::Off)
        return;
    const State before = std::exchange(m_state, State::Off);
    m_process->stop();
    returnToAccount(before);
    Q_EMIT stateChanged();
}

void LocalVoices::shutDown() {
    m_process->stop();
}

void LocalVoices::takeAddress(const QUrl &baseUrl, const QString &key) {
    m_baseUrl = baseUrl;
    m_key = key;
    setState(State::On);
    for (const QPointer<ElevenLabsService> &service : std::as_const(m_services)) {
        if (service)
            connectService(*service);
    }
}

void LocalVoices::takeFailure(const QString &reason) {
    // Otherwise a program that can't run would fail again at every start.
    m_defaults.setUseLocalVoices(false);
    m_failureReason = reason;
    returnToAccount(std::exchange(m_state, State::Failed));
    Q_EMIT stateChanged();
}

void LocalVoices::returnToAccount(State before) {
    for (const QPointer<ElevenLabsService> &service : std::as_const(m_services)) {
        // A service that stayed signed in to the account needs no new connection.
        if (service && (before == State::On || !service->isAuthenticated()))
            connectService(*service);
    }
}

void LocalVoices::connectService(ElevenLabsService &service) {
    if (m_state == State::On) {
        service.useEndpoint(m_baseUrl, ElevenLabsService::KeyKeeping::SessionOnly);
        service.setApiKey(m_key);
        service.connectAccount(ElevenLabsService::KeychainErrors::Hide);
        return;
    }
    // While the program starts, a new window's service waits for it instead of contacting the account first.
    if (m_state == State::Starting)
        return;
    service.useEndpoint(defaultEndpoint(), ElevenLabsService::KeyKeeping::Keyring);
    service.connectStoredAccount();
}

void LocalVoices::setState(State state) {
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

} // namespace orlenta::speech
