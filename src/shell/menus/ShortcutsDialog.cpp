#include "shell/menus/ShortcutsDialog.h"

#include <QtCore/QEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include "controller/commands/CommandTable.h"
#include "shell/controls/FocusedItem.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QTreeWidgetItem *addShortcutGroup(QTreeWidget &tree, const QString &title) {
    auto *group = new QTreeWidgetItem(&tree, {title});
    // Sets only the weight; the rest comes from the list's font, at any interface scale.
    QFont strong;
    strong.setWeight(QFont::DemiBold);
    group->setFont(0, strong);
    return group;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(QWidget *parent) : QDialog(parent), m_keys(new QTreeWidget) {
    setWindowTitle(u"Keyboard Shortcuts"_s);
    setAccessibleName(windowTitle());
    m_keys->setHeaderLabels({u"Command"_s, u"Keys"_s});
    m_keys->setAccessibleName(u"Keyboard shortcuts"_s);
    m_keys->setToolTip(u"Commands and their keys (Up and Down to scroll)"_s);
    m_keys->setRootIsDecorated(false);
    m_keys->setItemsExpandable(false);
    m_keys->setFocusPolicy(Qt::StrongFocus);
    m_keys->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_keys->header()->setSectionsMovable(false);
    m_keys->header()->setAccessibleName(u"Columns"_s);
    m_keys->header()->setToolTip(u"Commands and their keys"_s);
    addKeys();
    m_keys->expandAll();
    m_keys->setCurrentItem(m_keys->topLevelItem(0));
    new FocusedItem(*m_keys);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close this list (Esc)"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_keys, 1);
    layout->addWidget(buttons);
    applyMeasures();
}

void ShortcutsDialog::showFor(QWidget &window) {
    auto *dialog = window.findChild<ShortcutsDialog *>(QString(), Qt::FindDirectChildrenOnly);
    if (dialog == nullptr) {
        dialog = new ShortcutsDialog(&window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    // Not modal, so that the user can try the keys while reading.
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ShortcutsDialog::addKeys() {
    QHash<controller::CommandGroup, QTreeWidgetItem *> groups;
    for (const controller::Command &command : controller::CommandTable::all()) {
        QStringList keys;
        for (const QString &key : command.keys)
            keys.append(QKeySequence(key).toString(QKeySequence::NativeText));
        if (keys.isEmpty())
            continue;
        QTreeWidgetItem *&group = groups[command.group];
        if (group == nullptr)
            group = addShortcutGroup(*m_keys, controller::CommandTable::groupTitle(command.group));
        new QTreeWidgetItem(group, {command.title, keys.join(u", "_s)});
    }
}

void ShortcutsDialog::changeEvent(QEvent *event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange && layout() != nullptr)
        applyMeasures();
}

void ShortcutsDialog::applyMeasures() {
    const int unit = Theme::unit(this);
    layout()->setContentsMargins(unit * 4, unit * 4, unit * 4, unit * 4);
    layout()->setSpacing(unit * 3);
    setMinimumSize(unit * 120, unit * 80);
    resize(size().expandedTo(QSize(unit * 140, unit * 150)));
}

} // namespace orlenta::shell
