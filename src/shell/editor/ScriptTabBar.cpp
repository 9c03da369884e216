#include "shell/editor/ScriptTabBar.h"

#include <algorithm>

#include <QtCore/QScopedValueRollback>
#include <QtCore/QVariant>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include "controller/commands/CommandTable.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/script/TabEditing.h"
#include "shell/controls/ShownText.h"
#include "shell/editor/ScriptTabList.h"
#include "shell/menus/CommandActions.h"
#include "shell/menus/MenuMnemonics.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

/// More than fit into a window.
constexpr qsizetype mostTabs = 40;

} // namespace

ScriptTabBar::ScriptTabBar(controller::ProjectController &controller, QWidget *parent)
    : QWidget(parent), m_controller(controller), m_bar(new QTabBar(this)), m_add(new QToolButton(this)),
      m_all(new QToolButton(this)), m_name(new QLineEdit(m_bar)) {
    m_bar->setMovable(true);
    m_bar->setExpanding(false);
    m_bar->setDrawBase(false);
    m_bar->setDocumentMode(true);
    m_bar->setElideMode(Qt::ElideRight);
    m_bar->setUsesScrollButtons(true);
    m_bar->setContextMenuPolicy(Qt::CustomContextMenu);
    m_bar->setAccessibleName(QStringLiteral("Script tabs"));
    m_bar->installEventFilter(this);
    m_add->setIcon(Icon::named(QStringLiteral("plus")));
    m_add->setAutoRaise(true);
    m_add->setFocusPolicy(Qt::StrongFocus);
    m_add->setAccessibleName(QStringLiteral("New Tab"));
    m_add->setToolTip(tipOf(CommandId::NewTab));
    m_all->setIcon(Icon::named(QStringLiteral("chevron-down")));
    m_all->setAutoRaise(true);
    m_all->setFocusPolicy(Qt::StrongFocus);
    m_all->setAccessibleName(QStringLiteral("All Tabs"));
    m_all->setToolTip(QStringLiteral("List all tabs"));
    m_name->setAccessibleName(QStringLiteral("Tab name"));
    m_name->setToolTip(QStringLiteral("The tab's name"));
    m_name->hide();
    m_name->installEventFilter(this);

    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_bar, 0);
    layout->addWidget(m_all, 0);
    layout->addWidget(m_add, 0);
    layout->addStretch(1);
    applyMeasures();

    connect(m_bar, &QTabBar::currentChanged, this, &ScriptTabBar::chooseCurrent);
    connect(m_bar, &QTabBar::tabMoved, this, [this] { m_isDragging = !m_isSyncing; });
    connect(m_bar, &QTabBar::tabBarDoubleClicked, this, &ScriptTabBar::rename);
    connect(m_bar, &QTabBar::customContextMenuRequested, this, &ScriptTabBar::openMenu);
    connect(m_add, &QToolButton::clicked, this, [this] { m_controller.tabs().addTab(); });
    connect(m_all, &QToolButton::clicked, this, &ScriptTabBar::listTabs);
    connect(m_name, &QLineEdit::returnPressed, this, [this] { endRename(true); });
    controller::onAnyChange<controller::TabsChanged, controller::ActiveTabChanged>(controller, this,
                                                                                   [this] { sync(); });
    sync();
}

model::TabId ScriptTabBar::idAt(int index) const {
    return model::TabId(m_bar->tabData(index).toUuid());
}

QString ScriptTabBar::nameAt(int index) const {
    return m_controller.project().tabs.at(m_first + index).name;
}

void ScriptTabBar::placeBar(qsizetype active, qsizetype count) {
    const qsizetype last = std::max<qsizetype>(0, count - mostTabs);
    // Keep neighbours of the active tab in the bar, so that the arrow keys reach them.
    const bool isInside = active > m_first && active < m_first + mostTabs - 1;
    if (!isInside)
        m_first = active - mostTabs / 2;
    m_first = std::clamp<qsizetype>(m_first, 0, last);
}

void ScriptTabBar::sync() {
    const QScopedValueRollback guard(m_isSyncing, true);
    const QList<model::ProjectTab> tabs = m_controller.project().tabs;
    endRename(false);
    const auto active = std::find_if(tabs.begin(), tabs.end(), [this](const model::ProjectTab &tab) {
        return m_controller.project().activeTabId == tab.id;
    });
    const qsizetype current = active == tabs.end() ? 0 : active - tabs.begin();
    placeBar(current, tabs.size());
    const int count = static_cast<int>(std::min<qsizetype>(tabs.size(), mostTabs));
    while (m_bar->count() > count)
        m_bar->removeTab(m_bar->count() - 1);
    while (m_bar->count() < count)
        m_bar->addTab(QString());
    for (int index = 0; index < count; ++index)
        syncTab(index, tabs.at(m_first + index));
    m_bar->setCurrentIndex(static_cast<int>(current - m_first));
    fitBar();
    m_all->setVisible(tabs.size() > count);
    for (auto *button : m_bar->findChildren<QToolButton *>())
        if (button->toolTip().isEmpty() && !button->accessibleName().isEmpty())
            button->setToolTip(button->accessibleName());
}

void ScriptTabBar::syncTab(int index, const model::ProjectTab &tab) {
    const QString name = shownName(tab.name);
    // A single ampersand would mark a mnemonic.
    const QString shown = QString(name).replace(QLatin1Char('&'), QLatin1String("&&"));
    if (m_bar->tabText(index) != shown)
        m_bar->setTabText(index, shown);
    m_bar->setTabData(index, tab.id.uuid());
    m_bar->setTabToolTip(index, name);
    auto *close = qobject_cast<QToolButton *>(m_bar->tabButton(index, QTabBar::RightSide));
    if (!m_controller.tabs().canCloseTab()) {
        m_bar->setTabButton(index, QTabBar::RightSide, nullptr);
        if (close != nullptr)
            close->deleteLater();
        return;
    }
    if (close == nullptr)
        addCloseButton(index);
    m_bar->tabButton(index, QTabBar::RightSide)->setAccessibleName(QStringLiteral("Close %1").arg(name));
}

void ScriptTabBar::addCloseButton(int index) {
    auto *close = new QToolButton(m_bar);
    close->setIcon(Icon::named(QStringLiteral("close"), Icon::Tint::Muted));
    close->setAutoRaise(true);
    // Delete closes a tab by keyboard, so keep the buttons out of the focus chain.
    close->setFocusPolicy(Qt::NoFocus);
    close->setToolTip(tipOf(CommandId::CloseTab));
    connect(close, &QToolButton::clicked, this, [this, close] {
        for (int at = 0; at < m_bar->count(); ++at)
            if (m_bar->tabButton(at, QTabBar::RightSide) == close)
                return m_controller.tabs().closeTab(idAt(at));
    });
    const int icon = Theme::iconSize(this) * 3 / 4;
    close->setIconSize({icon, icon});
    m_bar->setTabButton(index, QTabBar::RightSide, close);
}

void ScriptTabBar::listTabs() {
    auto *list = new ScriptTabList(m_controller, this);
    list->openBelow(*m_all);
}

// By itself the bar reserves room for its scroll buttons, which leaves a gap after a single tab.
void ScriptTabBar::fitBar() {
    m_bar->setMaximumWidth(std::max(1, m_bar->sizeHint().width()));
}

void ScriptTabBar::chooseCurrent(int index) {
    if (!m_isSyncing && index >= 0)
        m_controller.tabs().setActiveTab(idAt(index));
}

void ScriptTabBar::commitDrag() {
    m_isDragging = false;
    const QList<model::ProjectTab> tabs = m_controller.project().tabs;
    const qsizetype now = m_first + m_bar->currentIndex();
    const model::TabId id = idAt(m_bar->currentIndex());
    for (qsizetype before = 0; before < tabs.size(); ++before)
        if (tabs.at(before).id == id && before != now) {
            // The destination is the index to insert before, counted with the moved tab still in its old place.
            m_controller.tabs().moveTab(id, now > before ? now + 1 : now);
            break;
        }
    sync();
}

void ScriptTabBar::moveCurrent(int step) {
    const qsizetype to = m_first + m_bar->currentIndex() + step;
    if (to >= 0 && to < m_controller.project().tabs.size())
        m_controller.tabs().moveTab(idAt(m_bar->currentIndex()), step > 0 ? to + 1 : to);
}

void ScriptTabBar::rename(int index) {
    if (index < 0)
        return;
    m_renaming = index;
    const int inset = Theme::unit(this);
    const QRect tab = m_bar->tabRect(index);
    const int tall = m_name->sizeHint().height();
    m_name->setGeometry(tab.left() + inset / 2, tab.center().y() - tall / 2 + 1,
                        std::max(tab.width() - inset, inset * 24), tall);
    m_name->setText(shownName(nameAt(index)));
    m_name->show();
    m_name->raise();
    m_name->selectAll();
    m_name->setFocus(Qt::OtherFocusReason);
}

void ScriptTabBar::endRename(bool keep) {
    const int index = std::exchange(m_renaming, -1);
    if (index < 0)
        return;
    const bool hadFocus = m_name->hasFocus();
    const QString name = m_name->text().trimmed();
    // A long name is shown cut; left alone, it stays as it is.
    const bool isRenamed = m_name->isModified() && !name.isEmpty();
    m_name->hide();
    if (hadFocus)
        m_bar->setFocus(Qt::OtherFocusReason);
    if (keep && index < m_bar->count() && isRenamed && name != nameAt(index))
        m_controller.tabs().renameTab(idAt(index), name);
}

void ScriptTabBar::openMenu(const QPoint &position) {
    const int at = m_bar->tabAt(position);
    const int index = at < 0 ? m_bar->currentIndex() : at;
    if (index < 0)
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(Icon::named(QStringLiteral("pencil")), QStringLiteral("Rename Tab…"), this,
                    [this, index] { rename(index); });
    menu->addAction(Icon::named(QStringLiteral("duplicate")), QStringLiteral("Duplicate Tab"), this,
                    [this, id = idAt(index)] { m_controller.tabs().duplicateTab(id); });
    menu->addSeparator();
    menu->addAction(Icon::named(QStringLiteral("close")), QStringLiteral("Close Tab"), this,
                    [this, id = idAt(index)] { m_controller.tabs().closeTab(id); })
        ->setEnabled(m_controller.tabs().canCloseTab());
    MenuMnemonics::follow(*menu);
    menu->popup(m_bar->mapToGlobal(position));
}

bool ScriptTabBar::handleKey(const QKeyEvent &key) {
    if (isKeyOf(key, CommandId::RenameTab))
        rename(m_bar->currentIndex());
    else if (isKeyOf(key, CommandId::CloseThisTab) && m_controller.tabs().canCloseTab())
        m_controller.tabs().closeTab(idAt(m_bar->currentIndex()));
    else if (isKeyOf(key, CommandId::CloseThisTab))
        m_controller.notices().refuse(controller::CommandTable::requirement(CommandId::CloseThisTab));
    else if (isKeyOf(key, CommandId::MoveTab))
        moveCurrent(key.key() == Qt::Key_Left ? -1 : 1);
    else
        return false;
    return true;
}

bool ScriptTabBar::eventFilter(QObject *watched, QEvent *event) {
    // The name field is the bar's child: what it ignores comes here.
    if (watched == m_bar && event->type() == QEvent::KeyPress && m_renaming < 0)
        return handleKey(*static_cast<QKeyEvent *>(event));
    // The bar moves tabs during a drag; commit only the final order.
    if (watched == m_bar && event->type() == QEvent::MouseButtonRelease && m_isDragging)
        QMetaObject::invokeMethod(this, &ScriptTabBar::commitDrag, Qt::QueuedConnection);
    if (watched == m_name && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        endRename(false);
        return true;
    }
    if (watched == m_name && event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
        endRename(true);
    return QWidget::eventFilter(watched, event);
}

void ScriptTabBar::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fitBar();
}

void ScriptTabBar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    // The bar updates its own layout after a font change; measure its buttons after that.
    if (event->type() == QEvent::FontChange && m_name != nullptr)
        QMetaObject::invokeMethod(this, &ScriptTabBar::applyMeasures, Qt::QueuedConnection);
}

void ScriptTabBar::applyMeasures() {
    const int unit = Theme::unit(this);
    if (layout() == nullptr)
        return;
    layout()->setContentsMargins(unit * 2, 0, unit * 2, 0);
    layout()->setSpacing(unit);
    const int icon = Theme::iconSize(this);
    for (QToolButton *button : {m_add, m_all})
        button->setIconSize({icon, icon});
    for (int index = 0; index < m_bar->count(); ++index)
        if (auto *close = qobject_cast<QToolButton *>(m_bar->tabButton(index, QTabBar::RightSide))) {
            close->setIconSize({icon * 3 / 4, icon * 3 / 4});
            close->resize(close->sizeHint());
            m_bar->setTabText(index, m_bar->tabText(index));
        }
    fitBar();
}

} // namespace orlenta::shell
