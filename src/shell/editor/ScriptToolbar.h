#pragma once

#include <QtWidgets/QWidget>

#include "shell/editor/ScriptCommands.h"

class QPushButton;

namespace orlenta::controller {
class ProjectSession;
}

namespace orlenta::shell {

/// The part of the toolbar that belongs to the script: generates and plays the selected lines, and adds a line.
class ScriptToolbar final : public QWidget {
    Q_OBJECT
public:
    /// The commands outlive the toolbar.
    ScriptToolbar(controller::ProjectSession &session, ScriptCommands &commands, QWidget *parent = nullptr);

    /// Whether there is room for more than the icons of playing and adding.
    void setShowsWords(bool showsWords);
    /// Without words.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void sync();
    void applyMeasures();

    controller::ProjectSession &m_session;
    ScriptCommands &m_commands;
    QPushButton *m_generate = nullptr;
    QPushButton *m_play = nullptr;
    QPushButton *m_add = nullptr;
    bool m_showsWords = true;
};

} // namespace orlenta::shell
