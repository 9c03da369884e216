#pragma once

#include <QtWidgets/QDialog>

class QMenuBar;
class QTreeWidget;

namespace orlenta::shell {

/// All keys of a window, by the place where they count: those of its menus, and those that the script list, a line's
/// controls and its text have of their own.
class ShortcutsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit ShortcutsDialog(const QMenuBar &bar, QWidget *parent = nullptr);

    /// Shows the keys of the bar's window; the dialog that is open already, if there is one.
    static void showFor(const QMenuBar &bar);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addMenus(const QMenuBar &bar);
    void addOthers();
    void applyMeasures();

    QTreeWidget *m_keys;
};

} // namespace orlenta::shell
