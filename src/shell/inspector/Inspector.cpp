#include "shell/inspector/Inspector.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "shell/controls/Separator.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/DeliveryTipsDialog.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/inspector/ModelSection.h"
#include "shell/inspector/PresetSection.h"
#include "shell/inspector/SettingsSection.h"
#include "shell/inspector/VoiceSection.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
Inspector::Inspector(controller::ProjectController &controller, speech::ElevenLabsService &service, QWidget *parent)
    : QWidget(parent), m_lines(new InspectedLines(controller, this)),
      m_voices(new VoiceSection(controller, service, *m_lines)),
      m_presets(new PresetSection(controller, service, *m_lines)), m_models(new ModelSection(*m_lines)),
      m_settings(new SettingsSection(*m_lines)), m_content(new QWidget),
      m_subject(new TextLabel({}, TextLabel::Style::Caption)) {
    setAccessibleName(u"Inspector"_s);
    auto *tips = new QPushButton(u"Delivery tips"_s);
    tips->setToolTip(u"How you write your script shapes how it sounds."_s);
    tips->setIcon(Icon::named(u"help"_s));
    connect(tips, &QPushButton::clicked, this, &Inspector::showDeliveryTips);

    auto *column = new QVBoxLayout(m_content);
    const int unit = Theme::unit(this);
    column->setContentsMargins(unit * 3, unit * 3, unit * 3, unit * 3);
    column->setSpacing(unit * 3);
    column->addWidget(m_subject);
    column->addWidget(m_voices);
    column->addWidget(new Separator(Qt::Horizontal));
    column->addWidget(m_presets);
    column->addWidget(new Separator(Qt::Horizontal));
    column->addWidget(m_models);
    column->addWidget(new Separator(Qt::Horizontal));
    column->addWidget(m_settings);
    column->addWidget(tips);
    column->addStretch();

    auto *scroll = new QScrollArea;
    scroll->setWidget(m_content);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAccessibleName(u"Inspector"_s);
    m_viewport = scroll->viewport();
    m_viewport->installEventFilter(this);
    m_content->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    // Room for the line that sets the inspector off.
    layout->setContentsMargins(1, 0, 0, 0);
    layout->addWidget(scroll);
    m_content->setAutoFillBackground(false);
    scroll->viewport()->setAutoFillBackground(false);

    connect(m_voices, &VoiceSection::linesRequested, this, &Inspector::linesRequested);
    connect(m_voices, &VoiceSection::accountRequested, this, &Inspector::accountRequested);
    connect(m_voices, &VoiceSection::localVoicesRequested, this, &Inspector::localVoicesRequested);
    connect(m_lines, &InspectedLines::changed, this, &Inspector::showSubject);
    showSubject();
    fitWidth();
}

void Inspector::showDeliveryTips() {
    auto *dialog = new DeliveryTipsDialog(window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void Inspector::focusVoiceSearch() {
    m_voices->searchField()->setFocus(Qt::ShortcutFocusReason);
    m_voices->searchField()->selectAll();
}

void Inspector::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitWidth();
}

bool Inspector::eventFilter(QObject *watched, QEvent *event) {
    if ((watched == m_viewport && event->type() == QEvent::Resize) ||
        (watched == m_content && event->type() == QEvent::LayoutRequest))
        fitVoices();
    return QWidget::eventFilter(watched, event);
}

// The list of voices takes the height that the other sections leave.
void Inspector::fitVoices() {
    const QWidget &list = *m_voices->voiceList();
    if (!list.isVisibleTo(this))
        return;
    // Its fixed height: the layout may not have applied that yet.
    const int others = m_content->layout()->totalHeightForWidth(m_viewport->width()) - list.minimumHeight();
    m_voices->setListRoom(m_viewport->height() - others);
}

void Inspector::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.surface);
    painter.fillRect(QRect(0, 0, 1, height()), colors.border);
}

void Inspector::showSubject() {
    const qsizetype count = m_lines->ids().size();
    if (count == 0)
        m_subject->setText(u"Select a line to cast and direct it."_s);
    else
        m_subject->setText(count == 1 ? u"1 line selected"_s : QStringLiteral("%1 lines selected").arg(count));
}

void Inspector::fitWidth() {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int unit = Theme::unit(this);
    setMinimumWidth(std::max(unit * 68, m_content->minimumSizeHint().width() + bar));
}

} // namespace orlenta::shell
