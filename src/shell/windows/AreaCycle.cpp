#include "shell/windows/AreaCycle.h"

#include <algorithm>

#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>

namespace orlenta::shell {
namespace {

bool takesKeyboard(const QWidget &widget) {
    // A scroll area only scrolls its controls, which take the keyboard themselves.
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isVisible() && widget.isEnabled() &&
           qobject_cast<const QScrollArea *>(&widget) == nullptr;
}

} // namespace

AreaCycle::AreaCycle(const QList<QWidget *> &areas, QObject *parent) : QObject(parent), m_areas(areas) {
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, QWidget *now) { remember(now); });
}

qsizetype AreaCycle::areaOf(const QWidget *focus) const {
    const auto holds = [focus](const QWidget *area) { return area == focus || area->isAncestorOf(focus); };
    const auto found = focus == nullptr ? m_areas.end() : std::find_if(m_areas.begin(), m_areas.end(), holds);
    return found == m_areas.end() ? -1 : found - m_areas.begin();
}

void AreaCycle::remember(QWidget *focus) {
    if (const qsizetype area = areaOf(focus); area >= 0)
        m_last.insert(m_areas.at(area), focus);
}

QWidget *AreaCycle::targetIn(QWidget *area) const {
    // A list keeps its own current item, and may have reused the control for another one.
    if (takesKeyboard(*area))
        return area;
    if (QWidget *last = m_last.value(area); last != nullptr && takesKeyboard(*last))
        return last;
    QWidget *candidate = area;
    do {
        candidate = candidate->nextInFocusChain();
        if (area->isAncestorOf(candidate) && takesKeyboard(*candidate))
            return candidate;
    } while (candidate != area);
    return nullptr;
}

void AreaCycle::step(bool forward) {
    const qsizetype count = m_areas.size();
    const qsizetype here = areaOf(QApplication::focusWidget());
    const qsizetype start = here >= 0 ? here : forward ? count - 1 : 0;
    for (qsizetype moved = 1; moved < count; ++moved) {
        const qsizetype index = (start + (forward ? moved : count - moved)) % count;
        QWidget *target = targetIn(m_areas.at(index));
        if (target == nullptr)
            continue;
        target->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return;
    }
}

} // namespace orlenta::shell
