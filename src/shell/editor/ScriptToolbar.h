#pragma once

#include <QtWidgets/QWidget>

#include "shell/editor/ScriptCommands.h"

class QLabel;
class QPushButton;

namespace orlenta::controller {
class ProjectSession;
}

namespace orlenta::shell {

/// The toolbar of the script: generates and plays the selected lines, adds a line, and shows how many are selected.
class ScriptToolbar final : public QWidget {
    Q_OBJECT
public:
    /// The commands outlive the toolbar.
    ScriptToolbar(controller::ProjectSession &session, ScriptCommands &commands, QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void sync();
    void applyMeasures();
    void fitStatus();

    controller::ProjectSession &m_session;
    ScriptCommands &m_commands;
    QPushButton *m_generate = nullptr;
    QPushButton *m_play = nullptr;
    QPushButton *m_add = nullptr;
    QLabel *m_status = nullptr;
};

} // namespace orlenta::shell
