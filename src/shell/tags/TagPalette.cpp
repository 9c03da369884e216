#include "shell/tags/TagPalette.h"

#include <algorithm>
#include <utility>

#include <QtCore/QEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolButton>

#include "controller/commands/CommandTable.h"
#include "controller/ProjectController.h"
#include "controller/script/Selection.h"
#include "controller/script/TagEditing.h"
#include "shell/controls/FlowLayout.h"
#include "shell/controls/TextLabel.h"
#include "shell/menus/CommandActions.h"
#include "shell/menus/MenuMnemonics.h"
#include "shell/tags/TagChip.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"
#include "tags/TagInsertion.h"

namespace orlenta::shell {
namespace {

/// As tall as its content if there is room; otherwise shrinks to its minimum height and scrolls.
class TagRowsArea final : public QScrollArea {
public:
    using QScrollArea::QScrollArea;

    [[nodiscard]] QSize sizeHint() const override { return {QScrollArea::sizeHint().width(), maximumHeight()}; }
};

QString stressKey() {
    return controller::CommandTable::command(CommandId::Stress).keys.first();
}

} // namespace

TagPalette::TagPalette(controller::ProjectController &controller, Insert insert, QWidget *parent)
    : QWidget(parent), m_controller(controller), m_insert(std::move(insert)), m_column(new QVBoxLayout(this)),
      m_header(new QHBoxLayout) {
    makeHeader();
    makeRows();
    // The key counts while the palette is hidden, too.
    auto *stress = new QShortcut(QKeySequence(stressKey()), parent != nullptr ? parent : this);
    connect(stress, &QShortcut::activated, this, [this] { m_insert(tags::stressTagItem()); });
    connect(&controller.tagEditing(), &controller::TagEditing::tagToolbarExpandedChanged, this, &TagPalette::showForm);
    controller::onAnyChange<controller::SelectionChanged>(controller, this, [this] { followSelection(); });
    applyMeasures();
    showForm();
    followSelection();
}

void TagPalette::makeHeader() {
    m_title = new TextLabel(QStringLiteral("PERFORMANCE TAGS"), TextLabel::Style::Section, this);
    makeMenus();
    m_stress = makeChip(tags::stressTagItem(), this);
    m_stress->setHint(stressKey());
    m_stress->setAccessibleName(QStringLiteral("STRESS"));
    m_stress->setToolTip(tipOf(CommandId::Stress));
    m_toggle = new QToolButton(this);
    m_toggle->setAutoRaise(true);
    connect(m_toggle, &QToolButton::clicked, &m_controller.tagEditing(),
            &controller::TagEditing::toggleTagToolbarExpanded);
    m_header->addWidget(m_title);
    m_header->addStretch(1);
    m_header->addWidget(m_stress);
    m_header->addWidget(m_toggle);
    m_column->addLayout(m_header);
    m_column->addWidget(m_menus);
}

void TagPalette::makeMenus() {
    m_menus = new QWidget(this);
    auto *flow = new FlowLayout(m_menus);
    m_flows.append(flow);
    for (const tags::TagCategory category : tags::assignableTagCategories) {
        const QString title = tags::rawValue(category);
        auto *chip = new TagChip(title, category, m_menus);
        chip->setAccessibleName(QStringLiteral("%1 tags").arg(title));
        chip->setToolTip(QStringLiteral("%1 tags to insert at the caret").arg(title));
        auto *menu = new QMenu(chip);
        fillMenu(menu, category);
        MenuMnemonics::follow(*menu);
        chip->setMenu(menu);
        flow->addWidget(chip);
    }
}

void TagPalette::fillMenu(QMenu *menu, tags::TagCategory category) {
    for (const tags::TagItem &item : m_controller.tagEditing().tagItems(category)) {
        const QString title = QString(item.label).replace(QLatin1Char('&'), QLatin1String("&&"));
        menu->addAction(title, this, [this, item] { m_insert(item); });
    }
}

void TagPalette::makeRows() {
    m_rows = new QWidget;
    m_grid = new QGridLayout(m_rows);
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setColumnStretch(1, 1);
    for (const tags::TagCategory category : tags::assignableTagCategories) {
        auto *title = new TextLabel(tags::rawValue(category), TextLabel::Style::Caption, m_rows);
        title->setWordWrap(false);
        m_rowTitles.append(title);
        auto *flow = new FlowLayout;
        m_flows.append(flow);
        for (const tags::TagItem &item : m_controller.tagEditing().tagItems(category))
            flow->addWidget(makeChip(item, m_rows));
        const int row = m_grid->rowCount();
        m_grid->addWidget(title, row, 0, Qt::AlignTop | Qt::AlignLeading);
        m_grid->addLayout(flow, row, 1);
    }
    m_rowsArea = new TagRowsArea(this);
    m_rowsArea->setFrameShape(QFrame::NoFrame);
    m_rowsArea->setWidgetResizable(true);
    m_rowsArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A click between two chips would take the focus from the text.
    m_rowsArea->setFocusPolicy(Qt::NoFocus);
    m_rowsArea->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll the tags"));
    m_rowsArea->setWidget(m_rows);
    m_rowsArea->viewport()->setAutoFillBackground(false);
    m_rows->setAutoFillBackground(false);
    m_column->addWidget(m_rowsArea);
}

TagChip *TagPalette::makeChip(const tags::TagItem &item, QWidget *parent) {
    auto *chip = new TagChip(item.label, item.category, parent);
    chip->setAccessibleName(QStringLiteral("Insert %1").arg(item.label));
    chip->setToolTip(QStringLiteral("Insert %1 at the caret").arg(item.insertText));
    connect(chip, &TagChip::clicked, this, [this, item] { m_insert(item); });
    return chip;
}

void TagPalette::setRowsLimit(int height) {
    m_rowsLimit = height;
    fitRows();
}

QSize TagPalette::minimumSizeHint() const {
    const QSize stress = m_stress->sizeHint();
    const QSize toggle = m_toggle->sizeHint();
    const int width = m_title->sizeHint().width() + stress.width() + toggle.width() + m_header->spacing() * 3;
    const int header = std::max({m_title->sizeHint().height(), stress.height(), toggle.height()});
    return QSize(width, header + m_column->spacing() + stress.height()).grownBy(m_column->contentsMargins());
}

void TagPalette::showForm() {
    const bool isExpanded = m_controller.tagEditing().tagToolbarExpanded();
    m_menus->setVisible(!isExpanded);
    m_rowsArea->setVisible(isExpanded);
    m_toggle->setIcon(Icon::named(isExpanded ? QStringLiteral("chevron-up") : QStringLiteral("chevron-down")));
    m_toggle->setAccessibleName(isExpanded ? QStringLiteral("Collapse tag palette")
                                           : QStringLiteral("Expand tag palette"));
    m_toggle->setToolTip(
        tipWithKey(isExpanded ? QStringLiteral("Collapse tag palette") : QStringLiteral("Expand tag palette"),
                   CommandId::ToggleTagToolbar));
    arrange();
}

void TagPalette::followSelection() {
    const bool canInsert = m_controller.selection().singleSelectedLineId().has_value();
    if (m_rows->isEnabledTo(m_rowsArea) == canInsert)
        return;
    for (QWidget *part : {static_cast<QWidget *>(m_stress), m_menus, m_rows})
        part->setEnabled(canInsert);
}

void TagPalette::arrange() {
    placeMenus();
    fitRows();
}

// Places the menus beside the title if there is room, or below it.
void TagPalette::placeMenus() {
    const QMargins margins = m_column->contentsMargins();
    int needed = margins.left() + margins.right() + m_header->spacing() * 5;
    for (const QWidget *part : {m_title, m_menus, static_cast<QWidget *>(m_stress), static_cast<QWidget *>(m_toggle)})
        needed += part->sizeHint().width();
    const bool isInHeader = m_header->indexOf(m_menus) >= 0;
    if (isInHeader == (width() >= needed))
        return;
    if (isInHeader) {
        m_header->removeWidget(m_menus);
        m_column->insertWidget(1, m_menus);
    } else {
        m_column->removeWidget(m_menus);
        m_header->insertWidget(1, m_menus);
    }
}

void TagPalette::fitRows() {
    const QMargins margins = m_column->contentsMargins();
    const int natural = m_rows->heightForWidth(width() - margins.left() - margins.right());
    const int least = m_stress->sizeHint().height();
    m_rowsArea->setMinimumHeight(least);
    m_rowsArea->setMaximumHeight(std::clamp(natural, least, std::max(m_rowsLimit, least)));
    m_rowsArea->updateGeometry();
}

void TagPalette::applyMeasures() {
    const int unit = Theme::unit(this);
    m_column->setContentsMargins(unit * 3, unit, unit * 4, unit * 2);
    m_column->setSpacing(unit * 3 / 2);
    m_header->setSpacing(unit * 2);
    m_grid->setHorizontalSpacing(unit * 3);
    m_grid->setVerticalSpacing(unit * 3 / 2);
    for (FlowLayout *flow : std::as_const(m_flows))
        flow->setSpacing(unit);
    for (QWidget *title : std::as_const(m_rowTitles))
        title->setFixedHeight(m_stress->sizeHint().height());
    const int icon = Theme::iconSize(this);
    m_toggle->setIconSize({icon, icon});
}

void TagPalette::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    arrange();
}

void TagPalette::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange || m_rowsArea == nullptr)
        return;
    // The chips get the new font after their parent.
    QMetaObject::invokeMethod(
        this,
        [this] {
            applyMeasures();
            arrange();
        },
        Qt::QueuedConnection);
}

} // namespace orlenta::shell
