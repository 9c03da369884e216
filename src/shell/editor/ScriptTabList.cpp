#include "shell/editor/ScriptTabList.h"

#include <algorithm>

#include <QtCore/QStringListModel>
#include <QtGui/QScreen>
#include <QtWidgets/QListView>
#include <QtWidgets/QVBoxLayout>

#include "controller/ProjectController.h"
#include "controller/script/TabEditing.h"
#include "shell/controls/ShownText.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

ScriptTabList::ScriptTabList(controller::ProjectController &controller, QWidget *parent)
    : QFrame(parent, Qt::Popup), m_controller(controller), m_names(new QListView(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(QStringLiteral("All tabs"));
    QStringList names;
    qsizetype current = 0;
    for (const model::ProjectTab &tab : controller.project().tabs) {
        if (controller.project().activeTabId == tab.id)
            current = names.size();
        names.append(shownName(tab.name));
    }
    m_names->setModel(new QStringListModel(names, m_names));
    m_names->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_names->setUniformItemSizes(true);
    m_names->setTextElideMode(Qt::ElideRight);
    m_names->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_names->setAccessibleName(QStringLiteral("All tabs"));
    m_names->setToolTip(QStringLiteral("Choose the tab to show"));
    m_names->setCurrentIndex(m_names->model()->index(static_cast<int>(current), 0));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_names);
    connect(m_names, &QListView::clicked, this, [this](const QModelIndex &index) { choose(index.row()); });
    connect(m_names, &QListView::activated, this, [this](const QModelIndex &index) { choose(index.row()); });
}

void ScriptTabList::openBelow(const QWidget &button) {
    const int unit = Theme::unit(this);
    const QRect available = button.screen()->availableGeometry();
    resize(std::min(unit * 60, available.width()), std::min(unit * 100, available.height()));
    QPoint corner = button.mapToGlobal(QPoint(0, button.height()));
    corner.setX(std::clamp(corner.x(), available.left(), available.right() + 1 - width()));
    corner.setY(std::clamp(corner.y(), available.top(), available.bottom() + 1 - height()));
    move(corner);
    show();
    m_names->scrollTo(m_names->currentIndex(), QAbstractItemView::PositionAtCenter);
    m_names->setFocus(Qt::PopupFocusReason);
}

void ScriptTabList::choose(int row) {
    const QList<model::ProjectTab> &tabs = m_controller.project().tabs;
    if (row >= 0 && row < tabs.size())
        m_controller.tabs().setActiveTab(model::TabId(tabs.at(row).id));
    close();
}

} // namespace orlenta::shell
