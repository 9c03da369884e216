#pragma once

#include <QtWidgets/QDialog>

class QTreeWidget;

namespace orlenta::shell {

/// Lists all commands and their keys from the command table, by menu and by where the keys work.
class ShortcutsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit ShortcutsDialog(QWidget *parent = nullptr);

    /// Shows the window's list of shortcuts, or raises the one that is already open.
    static void showFor(QWidget &window);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addKeys();
    void applyMeasures();

    QTreeWidget *m_keys;
};

} // namespace orlenta::shell
