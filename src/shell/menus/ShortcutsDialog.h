#pragma once

#include <QtWidgets/QDialog>

class QTreeWidget;

namespace orlenta::shell {

/// All commands and their keys as the table has them, by menu and by the place where the keys count.
class ShortcutsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit ShortcutsDialog(QWidget *parent = nullptr);

    /// Shows the window's list of keys; the one that is open already, if there is one.
    static void showFor(QWidget &window);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addKeys();
    void applyMeasures();

    QTreeWidget *m_keys;
};

} // namespace orlenta::shell
