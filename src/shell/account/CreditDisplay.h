#pragma once

#include <QtWidgets/QPushButton>

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class LocalVoices;

/// Shows what the account has spent, or that none is connected; a click opens the account panel.
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
