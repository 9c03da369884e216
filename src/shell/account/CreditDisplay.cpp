#include "shell/account/CreditDisplay.h"

#include <QtCore/QLocale>

#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/LocalVoices.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using speech::ElevenLabsService;

CreditDisplay::CreditDisplay(const ElevenLabsService &service, const speech::LocalVoices &localVoices, QWidget *parent)
    : QPushButton(parent), m_service(service), m_localVoices(localVoices) {
    Theme::setRole(this, ButtonRole::Quiet);
    setAccessibleName(u"Account"_s);
    connect(&service, &ElevenLabsService::userChanged, this, &CreditDisplay::showState);
    connect(&service, &ElevenLabsService::isLoadingChanged, this, &CreditDisplay::showState);
    connect(&service, &ElevenLabsService::isAuthenticatedChanged, this, &CreditDisplay::showState);
    connect(&localVoices, &speech::LocalVoices::stateChanged, this, &CreditDisplay::showState);
    showState();
}

void CreditDisplay::showState() {
    const bool isLocal = m_localVoices.state() == speech::LocalVoices::State::On;
    setIcon(Icon::named(isLocal ? u"speaker"_s : u"account"_s));
    if (m_service.user())
        setText(m_service.user()->creditsText());
    else
        setText(m_service.isLoading() || m_localVoices.state() == speech::LocalVoices::State::Starting
                    ? u"Connecting…"_s
                    : u"Not connected"_s);
    QString tip = isLocal ? u"Local voices"_s : u"ElevenLabs account"_s;
    if (m_service.user()) {
        const speech::Subscription &plan = m_service.user()->subscription;
        tip = QStringLiteral("%1: %2 of %3 credits used")
                  .arg(tip, locale().toString(plan.characterCount), locale().toString(plan.characterLimit));
        // The plan name of local voices means nothing to the user.
        if (!isLocal)
            tip += QStringLiteral(" (%1 plan)").arg(plan.planName());
    }
    setToolTip(tip);
    setAccessibleDescription(tip);
}

} // namespace orlenta::shell
