#include "shell/controls/SettingSlider.h"

#include <cmath>

#include <QtCore/QEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/InfoButton.h"
#include "shell/controls/TextLabel.h"

namespace orlenta::shell {
namespace {

constexpr double ticksPerUnit = 100.0;

int ticks(double value) {
    return static_cast<int>(std::lround(value * ticksPerUnit));
}

} // namespace

SettingSlider::SettingSlider(const QString &title, Range range, const QStringList &help, QWidget *parent)
    : QWidget(parent), m_range(range), m_slider(new QSlider(Qt::Horizontal)),
      m_reading(new TextLabel({}, TextLabel::Style::Caption)) {
    m_reading->setWordWrap(false);
    m_slider->setRange(ticks(range.minimum), ticks(range.maximum));
    m_slider->setSingleStep(1);
    m_slider->setPageStep(10);
    m_slider->setValue(ticks(range.standard));
    m_slider->setAccessibleName(title);
    m_slider->setAccessibleDescription(help.join(QLatin1Char('\n')));
    m_slider->setToolTip(QStringLiteral("%1, %2 to %3. Double-click for %4.")
                             .arg(title)
                             .arg(range.minimum, 0, 'f', 1)
                             .arg(range.maximum, 0, 'f', 1)
                             .arg(range.standard, 0, 'f', 2));
    m_slider->setFocusPolicy(Qt::StrongFocus);
    m_slider->installEventFilter(this);
    m_committed = m_slider->value();

    auto *name = new TextLabel(title, TextLabel::Style::Body);
    name->setWordWrap(false);
    auto *header = new QHBoxLayout;
    header->setSpacing(4);
    header->addWidget(name);
    header->addWidget(new InfoButton(title, help));
    header->addStretch();
    header->addWidget(m_reading);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(header);
    layout->addWidget(m_slider);

    connect(m_slider, &QSlider::valueChanged, this, [this] {
        m_isShared = true;
        showReading();
        if (!m_slider->isSliderDown())
            commit(Gesture::Step);
    });
    connect(m_slider, &QSlider::sliderReleased, this, [this] { commit(Gesture::Drag); });
    showReading();
}

double SettingSlider::value() const {
    return m_slider->value() / ticksPerUnit;
}

void SettingSlider::showValue(double value, bool isShared) {
    // A drag in progress is newer and is reported when it ends.
    if (m_slider->isSliderDown())
        return;
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(ticks(value));
    m_committed = m_slider->value();
    m_isShared = isShared;
    showReading();
}

bool SettingSlider::eventFilter(QObject *watched, QEvent *event) {
    // Scrolling must not change a slider that happens to be under the pointer.
    if (event->type() == QEvent::Wheel && !m_slider->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::MouseButtonDblClick) {
        m_slider->setValue(ticks(m_range.standard));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void SettingSlider::showReading() {
    m_reading->setText(m_isShared ? QString::number(value(), 'f', 2) : QStringLiteral("Mixed"));
}

void SettingSlider::commit(Gesture gesture) {
    if (m_slider->value() == m_committed && m_isShared)
        return;
    m_committed = m_slider->value();
    Q_EMIT valueCommitted(value(), gesture);
}

} // namespace orlenta::shell
