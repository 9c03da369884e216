#pragma once

#include <QtWidgets/QPushButton>

namespace orlenta::speech {
class ElevenLabsService;
class LocalVoices;
} // namespace orlenta::speech

namespace orlenta::shell {

/// Shows the credits spent, or that no account is connected. A click opens the account panel.
class CreditDisplay final : public QPushButton {
    Q_OBJECT
public:
    CreditDisplay(const speech::ElevenLabsService &service, const speech::LocalVoices &localVoices,
                  QWidget *parent = nullptr);

private:
    void showState();

    const speech::ElevenLabsService &m_service;
    const speech::LocalVoices &m_localVoices;
};

} // namespace orlenta::shell
