#include "shell/menus/ShortcutsDialog.h"

#include <QtCore/QEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QString withoutMnemonic(const QString &title) {
    return QString(title).remove(u'&');
}

QTreeWidgetItem *addShortcutGroup(QTreeWidget &tree, const QString &title) {
    auto *group = new QTreeWidgetItem(&tree, {title});
    // The rest of the font is the list's, at any interface scale.
    QFont strong;
    strong.setWeight(QFont::DemiBold);
    group->setFont(0, strong);
    return group;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(const QMenuBar &bar, QWidget *parent) : QDialog(parent), m_keys(new QTreeWidget) {
    setWindowTitle(u"Keyboard Shortcuts"_s);
    setAccessibleName(windowTitle());
    m_keys->setHeaderLabels({u"Command"_s, u"Keys"_s});
    m_keys->setAccessibleName(u"Keyboard shortcuts"_s);
    m_keys->setToolTip(u"Commands and their keys (Up and Down read on)"_s);
    m_keys->setRootIsDecorated(false);
    m_keys->setItemsExpandable(false);
    m_keys->setFocusPolicy(Qt::StrongFocus);
    m_keys->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_keys->header()->setSectionsMovable(false);
    m_keys->header()->setAccessibleName(u"Columns"_s);
    m_keys->header()->setToolTip(u"Commands and their keys"_s);
    addOthers();
    addMenus(bar);
    m_keys->expandAll();
    m_keys->setCurrentItem(m_keys->topLevelItem(0));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close the list of keys (Esc)"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_keys, 1);
    layout->addWidget(buttons);
    applyMeasures();
}

void ShortcutsDialog::showFor(const QMenuBar &bar) {
    auto *dialog = bar.window()->findChild<ShortcutsDialog *>(QString(), Qt::FindDirectChildrenOnly);
    if (dialog == nullptr) {
        dialog = new ShortcutsDialog(bar, bar.window());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    // Not modal: it is there to be read while trying them.
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ShortcutsDialog::addMenus(const QMenuBar &bar) {
    for (const QAction *entry : bar.actions()) {
        QTreeWidgetItem *group = nullptr;
        for (const QAction *action : entry->menu()->actions()) {
            QStringList keys;
            for (const QKeySequence &key : action->shortcuts())
                keys.append(key.toString(QKeySequence::NativeText));
            if (keys.isEmpty())
                continue;
            if (group == nullptr)
                group = addShortcutGroup(*m_keys, withoutMnemonic(entry->text()));
            new QTreeWidgetItem(group, {withoutMnemonic(action->text()), keys.join(u", "_s)});
        }
    }
}

void ShortcutsDialog::addOthers() {
    struct Group {
        QString title;
        QList<std::pair<QString, QString>> keys;
    };
    const QList<Group> groups{
        {u"Script Lines"_s,
         {{u"Next line, previous line"_s, u"Down or Tab, Up or Shift+Tab"_s},
          {u"Extend the selection"_s, u"Shift+Down, Shift+Up"_s},
          {u"Edit the text of the line"_s, u"Return"_s},
          {u"Play the selected lines, or stop"_s, u"Space"_s},
          {u"Go to the controls of the line"_s, u"Right"_s},
          {u"Commands of the line"_s, u"Menu, Shift+F10"_s},
          {u"Scroll"_s, u"Page Up, Page Down, Home, End"_s},
          {u"Take the message below the lines away"_s, u"Esc"_s},
          {u"Leave the lines, forwards or backwards"_s, u"F6, Shift+F6"_s}}},
        {u"Controls of a Line"_s,
         {{u"Next control, previous control"_s, u"Tab or Right, Shift+Tab or Left"_s},
          {u"Press the control"_s, u"Return, Space"_s},
          {u"Play from elsewhere, in a waveform"_s, u"Left, Right, Page Up, Page Down, Home, End"_s},
          {u"Go back to the lines"_s, u"Esc"_s}}},
        {u"Text of a Line"_s,
         {{u"Edit the next line, the previous line"_s, u"Tab, Shift+Tab"_s},
          {u"Stress the selected text"_s, u"Alt+Shift+S"_s},
          {u"Go back to the lines"_s, u"Esc"_s}}}};
    for (const Group &group : groups) {
        QTreeWidgetItem *top = addShortcutGroup(*m_keys, group.title);
        for (const auto &[command, keys] : group.keys)
            new QTreeWidgetItem(top, {command, keys});
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
