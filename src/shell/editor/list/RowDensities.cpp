#include "shell/editor/list/RowDensities.h"

#include <utility>

#include "base/UserDefaults.h"
#include "controller/ProjectController.h"

namespace orlenta::shell {
namespace {

/// Tabs of projects that are never opened again would otherwise collect.
constexpr qsizetype mostTabs = 200;

} // namespace

RowDensities::RowDensities(controller::ProjectController &controller, base::UserDefaults &defaults, QObject *parent)
    : QObject(parent), m_controller(controller), m_defaults(defaults) {
    controller::onAnyChange<controller::ActiveTabChanged, controller::TabsChanged>(controller, this,
                                                                                   [this] { readCurrent(); });
    readCurrent();
}

void RowDensities::readCurrent() {
    const model::ProjectTab *tab = m_controller.activeTab();
    const bool isCompact = tab != nullptr && m_defaults.compactTabs().contains(tab->id.text());
    const RowDensity now = isCompact ? RowDensity::Compact : RowDensity::Comfortable;
    if (std::exchange(m_current, now) != now)
        Q_EMIT currentChanged();
}

void RowDensities::toggle() {
    const model::ProjectTab *tab = m_controller.activeTab();
    if (tab == nullptr)
        return;
    QStringList compact = m_defaults.compactTabs();
    if (compact.removeAll(tab->id.text()) == 0)
        compact.prepend(tab->id.text());
    m_defaults.setCompactTabs(compact.mid(0, mostTabs));
    readCurrent();
}

} // namespace orlenta::shell
