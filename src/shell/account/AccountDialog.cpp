#include "shell/account/AccountDialog.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/Separator.h"
#include "shell/controls/TextLabel.h"
#include "shell/controls/ToggleSwitch.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/LocalVoices.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using speech::ElevenLabsService;

AccountDialog::AccountDialog(ElevenLabsService &service, speech::LocalVoices &localVoices, QWidget *parent)
    : QDialog(parent), m_service(service), m_localVoices(localVoices),
      m_state(new TextLabel({}, TextLabel::Style::Heading)), m_detail(new TextLabel({}, TextLabel::Style::Caption)),
      m_key(new QLineEdit), m_showKey(new QToolButton), m_error(new TextLabel({}, TextLabel::Style::Danger)),
      m_connect(new QPushButton(u"Connect"_s)), m_signOut(new QPushButton(u"Sign Out"_s)),
      m_refresh(new QPushButton(u"Refresh"_s)), m_local(new ToggleSwitch(u"Use local voices"_s)),
      m_localState(new TextLabel({}, TextLabel::Style::Caption)), m_retryLocal(new QPushButton(u"Try Again"_s)) {
    setWindowTitle(u"Account"_s);
    setAccessibleName(u"Account"_s);
    const int unit = Theme::unit(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(unit * 5, unit * 5, unit * 5, unit * 4);
    layout->setSpacing(unit * 3);
    layout->addWidget(makeAccountGroup());
    layout->addWidget(new Separator(Qt::Horizontal));
    layout->addWidget(makeLocalGroup());
    layout->addStretch();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close this panel"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    // Takes effect only once the button is in the dialog; otherwise Return would press the first button.
    m_connect->setDefault(true);

    for (const auto signal : {&ElevenLabsService::apiKeyChanged, &ElevenLabsService::isAuthenticatedChanged,
                              &ElevenLabsService::isLoadingChanged, &ElevenLabsService::userChanged,
                              &ElevenLabsService::voicesChanged, &ElevenLabsService::errorMessageChanged})
        connect(&service, signal, this, &AccountDialog::showState);
    connect(&localVoices, &speech::LocalVoices::stateChanged, this, &AccountDialog::showState);
    showState();
    fit();
}

bool AccountDialog::event(QEvent *event) {
    const bool isHandled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange)
        fit();
    return isHandled;
}

void AccountDialog::fit() {
    // QLayout's own minimum size ignores that wrapped text grows taller as it gets narrower.
    const int smallest = Theme::unit(this) * 100;
    setMinimumSize(std::max(smallest, layout()->totalMinimumSize().width()), 0);
    setMinimumHeight(layout()->totalHeightForWidth(std::max(width(), minimumWidth())));
}

QString AccountDialog::stateText() const {
    return m_state->text();
}

QString AccountDialog::errorText() const {
    return m_error->text();
}

QString AccountDialog::localVoicesText() const {
    return m_localState->text();
}

QWidget *AccountDialog::makeAccountGroup() {
    m_key->setEchoMode(QLineEdit::Password);
    m_key->setAccessibleName(u"API key"_s);
    m_key->setToolTip(u"The key of your ElevenLabs account; it is kept in the keyring"_s);
    m_key->setMinimumWidth(fontMetrics().averageCharWidth() * 36);
    m_showKey->setText(u"Show"_s);
    m_showKey->setCheckable(true);
    m_showKey->setAccessibleName(u"Show the key"_s);
    m_showKey->setToolTip(u"Show the key as plain text"_s);
    m_connect->setToolTip(u"Connect with this key, or with the saved key if the field is empty"_s);
    m_signOut->setToolTip(u"Sign out and remove the key from the keyring"_s);
    m_refresh->setToolTip(u"Fetch the account's credits and voices again"_s);
    Theme::setRole(m_connect, ButtonRole::Primary);
    m_error->setAccessibleName(u"Failure"_s);
    m_error->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *group = new QWidget;
    auto *layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"ELEVENLABS ACCOUNT"_s, TextLabel::Style::Section));
    layout->addWidget(m_state);
    layout->addWidget(m_detail);
    auto *row = new QHBoxLayout;
    row->addWidget(m_key, 1);
    row->addWidget(m_showKey);
    layout->addLayout(row);
    layout->addWidget(m_error);
    auto *actions = new QHBoxLayout;
    actions->addStretch();
    actions->addWidget(m_refresh);
    actions->addWidget(m_signOut);
    actions->addWidget(m_connect);
    layout->addLayout(actions);

    connect(m_showKey, &QToolButton::toggled, this, [this](bool shown) {
        m_key->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
        m_showKey->setText(shown ? u"Hide"_s : u"Show"_s);
    });
    connect(m_key, &QLineEdit::textChanged, this, &AccountDialog::showState);
    connect(m_connect, &QPushButton::clicked, this, &AccountDialog::connectAccount);
    connect(m_signOut, &QPushButton::clicked, this, &AccountDialog::signOut);
    connect(m_refresh, &QPushButton::clicked, this, [this] { m_service.refreshAccount(); });
    return group;
}

QWidget *AccountDialog::makeLocalGroup() {
    m_local->setToolTip(u"Speak with voices on this computer; no account needed"_s);
    m_local->setAccessibleName(u"Use local voices"_s);
    auto *group = new QWidget;
    auto *layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"THIS COMPUTER"_s, TextLabel::Style::Section));
    layout->addWidget(m_local);
    layout->addWidget(m_localState);
    m_retryLocal->setToolTip(u"Connect to the local voices again"_s);
    layout->addWidget(m_retryLocal, 0, Qt::AlignLeft);
    connect(m_retryLocal, &QPushButton::clicked, this,
            [this] { m_service.connectAccount(ElevenLabsService::KeychainErrors::Hide); });
    connect(m_local, &QCheckBox::clicked, this, [this](bool isOn) {
        if (isOn)
            m_localVoices.switchOn();
        else
            m_localVoices.switchOff();
    });
    return group;
}

void AccountDialog::connectAccount() {
    // With an empty field, the service retries the key it has, such as a saved one that failed.
    if (const QString key = m_key->text().trimmed(); !key.isEmpty())
        m_service.setApiKey(key);
    m_service.connectAccount(ElevenLabsService::KeychainErrors::Show);
}

void AccountDialog::signOut() {
    hideKey();
    m_service.disconnectAccount();
}

void AccountDialog::hideKey() {
    m_key->clear();
    m_showKey->setChecked(false);
}

void AccountDialog::showState() {
    const speech::LocalVoices::State local = m_localVoices.state();
    m_local->setChecked(local == speech::LocalVoices::State::On || local == speech::LocalVoices::State::Starting);
    showLocalVoices();
    showAccount(local == speech::LocalVoices::State::On);
}

void AccountDialog::showLocalVoices() {
    const bool isOn = m_localVoices.state() == speech::LocalVoices::State::On;
    m_retryLocal->setVisible(isOn && !m_service.isAuthenticated() && !m_service.isLoading());
    switch (m_localVoices.state()) {
    case speech::LocalVoices::State::Off:
        m_localState->setText(u"Free voices that run on this computer, to try a script without an account."_s);
        break;
    case speech::LocalVoices::State::Starting:
        m_localState->setText(u"Starting the local voices…"_s);
        break;
    case speech::LocalVoices::State::On:
        if (m_service.isAuthenticated())
            m_localState->setText(
                QStringLiteral("The local voices are ready: %1 voices.").arg(m_service.voices().size()));
        else if (m_service.isLoading())
            m_localState->setText(u"Connecting to the local voices…"_s);
        else
            m_localState->setText(
                QStringLiteral("The local voices are running but don't answer. %1").arg(m_service.errorMessage()));
        break;
    case speech::LocalVoices::State::Failed:
        m_localState->setText(m_localVoices.failureReason());
        break;
    }
}

void AccountDialog::showAccount(bool isLocal) {
    const bool isConnected = m_service.isAuthenticated() && !isLocal;
    if (isConnected)
        hideKey();
    const bool isLoading = m_service.isLoading() && !isLocal;
    // Without a key, the message is about something else, such as a key that stayed in the keyring after a sign-out.
    const bool hasFailed =
        !isConnected && !isLoading && !isLocal && !m_service.apiKey().isEmpty() && !m_service.errorMessage().isEmpty();
    if (isLocal)
        m_state->setText(m_service.isAuthenticated() ? u"Local voices are in use"_s
                         : m_service.isLoading()     ? u"Connecting…"_s
                                                     : u"Not connected"_s);
    else if (isLoading)
        m_state->setText(u"Connecting…"_s);
    else if (isConnected)
        m_state->setText(u"Connected"_s);
    else
        m_state->setText(hasFailed ? u"Connection failed"_s : u"Not connected"_s);

    if (isConnected && m_service.user()) {
        const speech::ElevenLabsUser &user = *m_service.user();
        const QString name = user.firstName.value_or(QString());
        const QString plan = QStringLiteral("%1 plan · %2 · %3 voices")
                                 .arg(user.subscription.planName(), user.creditsText())
                                 .arg(m_service.voices().size());
        m_detail->setText(name.isEmpty() ? plan : QStringLiteral("%1 · %2").arg(name, plan));
    } else {
        m_detail->setText(isLocal ? u"Switch the local voices off to use an account."_s
                                  : u"Connect your account to generate with its voices."_s);
    }
    m_error->setText(isLocal ? QString() : m_service.errorMessage());
    m_error->setVisible(!m_error->text().isEmpty());
    for (QWidget *widget : {static_cast<QWidget *>(m_key), static_cast<QWidget *>(m_showKey)}) {
        widget->setVisible(!isConnected);
        widget->setEnabled(!isLocal);
    }
    // Not disabled: the focus would move to a button, and the next Return would press that.
    m_key->setReadOnly(isLoading);
    m_refresh->setVisible(isConnected);
    m_connect->setVisible(!isConnected);
    const bool hasKey = !m_service.apiKey().isEmpty();
    m_key->setPlaceholderText(hasKey ? u"Leave empty to try the saved key again"_s : u"ElevenLabs API key"_s);
    m_connect->setEnabled(!isLocal && !isLoading && (hasKey || !m_key->text().trimmed().isEmpty()));
    // A key that failed may still be in the keyring, so signing out stays possible.
    m_signOut->setVisible(!isLocal && (isConnected || hasKey));
}

} // namespace orlenta::shell
