#pragma once

#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace orlenta::speech {
class ElevenLabsService;
class LocalVoices;
} // namespace orlenta::speech

namespace orlenta::shell {

class ToggleSwitch;

/// The panel for the source of speech: the account and its key, or local voices.
class AccountDialog final : public QDialog {
    Q_OBJECT
public:
    AccountDialog(speech::ElevenLabsService &service, speech::LocalVoices &localVoices, QWidget *parent = nullptr);

    [[nodiscard]] QLineEdit *keyField() const { return m_key; }
    [[nodiscard]] QPushButton *connectButton() const { return m_connect; }
    [[nodiscard]] QPushButton *signOutButton() const { return m_signOut; }
    [[nodiscard]] QPushButton *refreshButton() const { return m_refresh; }
    [[nodiscard]] ToggleSwitch *localVoicesSwitch() const { return m_local; }
    [[nodiscard]] QPushButton *retryLocalVoicesButton() const { return m_retryLocal; }
    /// The state of the connection, and the failure below it.
    [[nodiscard]] QString stateText() const;
    [[nodiscard]] QString errorText() const;
    [[nodiscard]] QString localVoicesText() const;

protected:
    bool event(QEvent *event) override;

private:
    void fit();
    QWidget *makeAccountGroup();
    QWidget *makeLocalGroup();
    void showState();
    void showLocalVoices();
    void showAccount(bool isLocal);
    void connectAccount();
    void signOut();
    void hideKey();

    speech::ElevenLabsService &m_service;
    speech::LocalVoices &m_localVoices;
    QLabel *m_state;
    QLabel *m_detail;
    QLineEdit *m_key;
    QToolButton *m_showKey;
    QLabel *m_error;
    QPushButton *m_connect;
    QPushButton *m_signOut;
    QPushButton *m_refresh;
    ToggleSwitch *m_local;
    QLabel *m_localState;
    QPushButton *m_retryLocal;
};

} // namespace orlenta::shell
