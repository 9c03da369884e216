#pragma once

#include <QtWidgets/QPushButton>

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class LocalVoices;

/// What the account has spent, or why there is no account to tell of; a click opens the account panel.
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
