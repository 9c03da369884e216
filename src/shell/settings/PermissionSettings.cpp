#include "shell/settings/PermissionSettings.h"

#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "audio/recording/MicrophonePermission.h"
#include "shell/application/AppCommands.h"
#include "shell/controls/TextLabel.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

PermissionSettings::PermissionSettings(audio::MicrophonePermission &permission, AppCommands &commands, QWidget *parent)
    : QWidget(parent), m_permission(permission), m_commands(commands),
      m_granted(new TextLabel(u"Granted"_s, TextLabel::Style::Body)), m_grant(new QPushButton(u"Grant Access"_s)),
      m_reason(new TextLabel({}, TextLabel::Style::Caption)) {
    // Return in another field must not request permission.
    m_grant->setAutoDefault(false);
    m_grant->setToolTip(u"Ask for access to the microphone"_s);
    auto *state = new QWidget;
    auto *row = new QHBoxLayout(state);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_granted);
    row->addWidget(m_grant);
    row->addStretch();
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(u"Microphone"_s, state);
    form->addRow(m_reason);
    form->addRow(new TextLabel(u"For voice recording and speech-to-speech generation"_s, TextLabel::Style::Caption));
    connect(m_grant, &QPushButton::clicked, this, &PermissionSettings::requestMicrophone);
    connect(&permission, &audio::MicrophonePermission::authorizationStatusChanged, this,
            &PermissionSettings::showState);
    showState();
}

void PermissionSettings::requestMicrophone() {
    // After a refusal the desktop doesn't ask again; only its settings can change that.
    if (m_permission.authorizationStatus() == audio::MicrophoneAuthorization::Denied)
        Q_EMIT m_commands.openMicrophoneSettings();
    else
        m_permission.requestAccess(this, [this](bool) {
            m_hasAsked = true;
            showState();
        });
}

QString PermissionSettings::reason() const {
    switch (m_permission.authorizationStatus()) {
    case audio::MicrophoneAuthorization::NotDetermined:
        return u"The sound server is not available."_s;
    case audio::MicrophoneAuthorization::Unknown:
        return u"No microphone is connected."_s;
    case audio::MicrophoneAuthorization::Restricted:
    case audio::MicrophoneAuthorization::Denied:
    case audio::MicrophoneAuthorization::Authorized:
        break;
    }
    return {};
}

void PermissionSettings::showState() {
    const bool isGranted = m_permission.authorizationStatus() == audio::MicrophoneAuthorization::Authorized;
    m_granted->setVisible(isGranted);
    m_grant->setVisible(!isGranted);
    m_hasAsked = m_hasAsked && !isGranted;
    m_reason->setText(m_hasAsked ? reason() : QString());
    m_reason->setVisible(!m_reason->text().isEmpty());
}

} // namespace orlenta::shell
