#pragma once

#include <QtWidgets/QFrame>

class QListView;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// A pop-over with the names of all tabs. Choosing one shows it. Deletes itself when it closes.
class ScriptTabList final : public QFrame {
    Q_OBJECT
public:
    ScriptTabList(controller::ProjectController &controller, QWidget *parent);

    void openBelow(const QWidget &button);

private:
    void choose(int row);

    controller::ProjectController &m_controller;
    QListView *m_names;
};

} // namespace orlenta::shell
