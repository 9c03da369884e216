#pragma once

#include <QtWidgets/QPushButton>

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class LocalVoices;

/// Shows the credits spent, or that no account is connected. A click opens the account panel.
class CreditDisplay final : public QPushButton {
    Q_OBJECT
public:
    CreditDisplay(const speech::ElevenLabsService &service, const LocalVoices &localVoices, QWidget *parent = nullptr);

private:
    void showState();

    const speech::ElevenLabsService &m_service;
    const LocalVoices &m_localVoices;
};

} // namespace orlenta::shell
