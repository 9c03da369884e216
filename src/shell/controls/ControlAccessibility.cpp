#include "shell/controls/ControlAccessibility.h"

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QTabBar>

namespace orlenta::shell {
namespace {

/// Named by its accessible name. Its text is its value, because Linux screen readers read a value from there.
class ComboInterface final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit ComboInterface(QComboBox *combo) : QAccessibleWidget(combo, QAccessible::ComboBox) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? combo().currentText() : QAccessibleWidget::text(kind);
    }
    // The items count only while they are open; a closed list would keep its own focused item.
    int childCount() const override { return isOpen() ? 1 : 0; }
    QAccessibleInterface *child(int index) const override {
        return index == 0 && isOpen() ? QAccessible::queryAccessibleInterface(combo().view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return isOpen() && child->object() == combo().view() ? 0 : -1;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = isOpen();
        return state;
    }
    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString &name) override {
        if (isOpen() && actionNames().contains(name))
            combo().hidePopup();
        else if (actionNames().contains(name))
            combo().showPopup();
    }

    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int start, int end) const override { return combo().currentText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(combo().currentText().size()); }
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *start, int *end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    [[nodiscard]] QComboBox &combo() const { return *static_cast<QComboBox *>(widget()); }
    [[nodiscard]] bool isOpen() const { return combo().view()->isVisible(); }
};

QString shownTabTitle(const QTabBar &bar, int index) {
    QString title = bar.accessibleTabName(index).isEmpty() ? bar.tabText(index) : bar.accessibleTabName(index);
    return title.replace(QLatin1String("&&"), QLatin1String("&"));
}

class TabInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TabInterface(QTabBar *bar, int index) : m_bar(bar), m_index(index) {}

    bool isValid() const override { return m_bar != nullptr && m_index < m_bar->count(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return isValid() ? parent()->window() : nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_bar); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::PageTab; }
    QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? shownTabTitle(*m_bar, m_index) : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect tab = m_bar->tabRect(m_index);
        return {m_bar->mapToGlobal(tab.topLeft()), tab.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (!isValid())
            return state;
        const bool isCurrent = m_bar->currentIndex() == m_index;
        state.selectable = true;
        state.focusable = true;
        state.selected = isCurrent;
        state.focused = isCurrent && m_bar->hasFocus();
        state.disabled = !m_bar->isTabEnabled(m_index);
        state.invisible = !m_bar->isVisible();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override {
        if (isValid() && name == pressAction())
            m_bar->setCurrentIndex(m_index);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    [[nodiscard]] int index() const { return m_index; }

private:
    QPointer<QTabBar> m_bar;
    int m_index;
};

/// Its children are the tabs, then the widgets in the bar, such as close buttons.
class TabBarInterface final : public QAccessibleWidget {
public:
    explicit TabBarInterface(QTabBar *bar) : QAccessibleWidget(bar, QAccessible::PageTabList) {}
    ~TabBarInterface() override {
        for (const QAccessible::Id id : std::as_const(m_tabs))
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return bar().count() + QAccessibleWidget::childCount(); }
    QAccessibleInterface *child(int index) const override {
        if (index < 0 || index >= bar().count())
            return index < 0 ? nullptr : QAccessibleWidget::child(index - bar().count());
        if (const auto known = m_tabs.constFind(index); known != m_tabs.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto *tab = new TabInterface(&bar(), index);
        m_tabs.insert(index, QAccessible::registerAccessibleInterface(tab));
        return tab;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        if (child->role() == QAccessible::PageTab)
            return static_cast<const TabInterface *>(child)->index();
        const int widget = QAccessibleWidget::indexOfChild(child);
        return widget < 0 ? -1 : widget + bar().count();
    }
    QAccessibleInterface *focusChild() const override {
        return bar().hasFocus() ? child(bar().currentIndex()) : QAccessibleWidget::focusChild();
    }

private:
    [[nodiscard]] QTabBar &bar() const { return *static_cast<QTabBar *>(widget()); }

    mutable QHash<int, QAccessible::Id> m_tabs;
};

QAccessibleInterface *makeControlInterface(const QString &, QObject *object) {
    if (auto *combo = qobject_cast<QComboBox *>(object); combo != nullptr && !combo->isEditable())
        return new ComboInterface(combo);
    if (auto *bar = qobject_cast<QTabBar *>(object))
        return new TabBarInterface(bar);
    return nullptr;
}

} // namespace

void installControlAccessibility() {
    QAccessible::installFactory(makeControlInterface);
}

} // namespace orlenta::shell
