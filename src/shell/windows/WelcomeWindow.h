#pragma once

#include <QtWidgets/QMainWindow>

class QPushButton;

namespace orlenta::shell {

class AppCommands;

/// Shown while no project is open. Offers to create or open one.
class WelcomeWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit WelcomeWindow(AppCommands &commands);

    [[nodiscard]] QPushButton *newProjectButton() const { return m_newProject; }
    [[nodiscard]] QPushButton *openButton() const { return m_open; }
    [[nodiscard]] QPushButton *sampleButton() const { return m_sample; }

Q_SIGNALS:
    /// The user has closed it.
    void dismissed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fit();

    QPushButton *m_newProject;
    QPushButton *m_open;
    QPushButton *m_sample;
};

} // namespace orlenta::shell
