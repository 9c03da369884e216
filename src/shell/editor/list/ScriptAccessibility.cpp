#include "shell/editor/list/ScriptAccessibility.h"

#include <algorithm>

#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QScrollBar>

#include "shell/controls/NoticeLabel.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/row/WaveformBarsView.h"

namespace orlenta::shell {
namespace {

/// Its children are the visible rows in order, then the scroll bar.
class ScriptListInterface final : public QAccessibleWidget {
public:
    explicit ScriptListInterface(ScriptListView *list) : QAccessibleWidget(list, QAccessible::List) {}

    int childCount() const override { return static_cast<int>(items().size()); }
    QAccessibleInterface *child(int index) const override {
        return QAccessible::queryAccessibleInterface(items().value(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return static_cast<int>(items().indexOf(qobject_cast<QWidget *>(child->object())));
    }
    QAccessibleInterface *focusChild() const override {
        LineRow *row = list().hasFocus() ? list().currentRow() : nullptr;
        return row != nullptr ? QAccessible::queryAccessibleInterface(row) : QAccessibleWidget::focusChild();
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = true;
        state.extSelectable = true;
        // While the list has the focus, its current row is what is focused.
        state.focused = state.focused && list().currentRow() == nullptr;
        return state;
    }

private:
    [[nodiscard]] ScriptListView &list() const { return *static_cast<ScriptListView *>(widget()); }
    [[nodiscard]] QList<QWidget *> items() const {
        QList<LineRow *> rows = list().rows();
        std::sort(rows.begin(), rows.end(),
                  [](const LineRow *a, const LineRow *b) { return a->content().number < b->content().number; });
        QList<QWidget *> items(rows.begin(), rows.end());
        if (list().verticalScrollBar()->isVisible())
            items.append(list().verticalScrollBar());
        return items;
    }
};

class LineRowInterface final : public QAccessibleWidget {
public:
    explicit LineRowInterface(LineRow *row) : QAccessibleWidget(row, QAccessible::ListItem) {}

    QAccessibleInterface *parent() const override {
        // Skip the viewport between row and list.
        return QAccessible::queryAccessibleInterface(row().parentWidget()->parentWidget());
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.multiSelectable = true;
        state.selected = row().content().isSelected;
        state.focusable = true;
        state.focused = row().hasListFocus();
        state.offscreen = !row().parentWidget()->rect().intersects(row().geometry());
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString &name) override {
        if (actionNames().contains(name))
            Q_EMIT row().clicked(Qt::NoModifier);
    }

private:
    [[nodiscard]] LineRow &row() const { return *static_cast<LineRow *>(widget()); }
};

/// The playhead in percent of the audio's length.
class WaveformInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit WaveformInterface(WaveformBarsView *waveform) : QAccessibleWidget(waveform, QAccessible::Slider) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? QStringLiteral("%1%").arg(waveform().percent())
                                          : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return waveform().percent(); }
    void setCurrentValue(const QVariant &value) override { waveform().seek(value.toDouble() / 100.0); }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return qRound(100.0 * WaveformBarsView::keyStep); }

private:
    [[nodiscard]] WaveformBarsView &waveform() const { return *static_cast<WaveformBarsView *>(widget()); }
};

QAccessibleInterface *makeScriptInterface(const QString &, QObject *object) {
    if (auto *list = qobject_cast<ScriptListView *>(object))
        return new ScriptListInterface(list);
    if (auto *row = qobject_cast<LineRow *>(object))
        return new LineRowInterface(row);
    if (auto *waveform = qobject_cast<WaveformBarsView *>(object))
        return new WaveformInterface(waveform);
    if (auto *notice = qobject_cast<NoticeLabel *>(object))
        return new QAccessibleWidget(notice, QAccessible::Notification);
    return nullptr;
}

} // namespace

void installScriptAccessibility() {
    QAccessible::installFactory(makeScriptInterface);
}

} // namespace orlenta::shell
