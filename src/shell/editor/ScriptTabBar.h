#pragma once

#include <QtWidgets/QWidget>

#include "model/Ids.h"

class QKeyEvent;
class QLineEdit;
class QTabBar;
class QToolButton;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::model {
struct ProjectTab;
}

namespace orlenta::shell {

/// The script's tabs. The user can select, add, close, drag and rename them (double click or F2). With the focus in the
/// bar, the arrow keys select a tab, Ctrl+Shift with an arrow key moves it, and Delete closes it. Of very many tabs the
/// bar holds those around the active one, and a button lists all: QTabBar lays out all its tabs for each that it gets.
class ScriptTabBar final : public QWidget {
    Q_OBJECT
public:
    explicit ScriptTabBar(controller::ProjectController &controller, QWidget *parent = nullptr);

    [[nodiscard]] QTabBar &bar() const { return *m_bar; }
    /// Opens the list of all tabs. Its button is visible only if the bar doesn't hold them all.
    void listTabs();
    /// Opens the field to rename the tab in this place of the bar.
    void rename(int index);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void sync();
    void fitBar();
    void syncTab(int index, const model::ProjectTab &tab);
    void addCloseButton(int index);
    /// Chooses the first tab that the bar holds.
    void placeBar(qsizetype active, qsizetype count);
    [[nodiscard]] QString nameAt(int index) const;
    void chooseCurrent(int index);
    void commitDrag();
    void moveCurrent(int step);
    void endRename(bool keep);
    void openMenu(const QPoint &position);
    bool handleKey(const QKeyEvent &key);
    [[nodiscard]] model::TabId idAt(int index) const;
    void applyMeasures();

    controller::ProjectController &m_controller;
    QTabBar *m_bar = nullptr;
    QToolButton *m_add = nullptr;
    QToolButton *m_all = nullptr;
    QLineEdit *m_name = nullptr;
    /// The project's index of the bar's first tab.
    qsizetype m_first = 0;
    int m_renaming = -1;
    bool m_isSyncing = false;
    bool m_isDragging = false;
};

} // namespace orlenta::shell
