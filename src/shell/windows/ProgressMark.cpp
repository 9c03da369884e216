#include "shell/windows/ProgressMark.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>

#include "shell/controls/TextLabel.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ProgressMark::ProgressMark(const Words &words, QWidget *parent)
    : QWidget(parent), m_text(new TextLabel({}, TextLabel::Style::Caption, this)), m_progress(new QProgressBar(this)),
      m_stop(new QPushButton(words.stop, this)) {
    m_text->setWordWrap(false);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(words.progressName);
    m_progress->setToolTip(words.progressTip);
    m_stop->setAccessibleName(words.stopName);
    m_stop->setToolTip(words.stopTip);
    Theme::setRole(m_stop, ButtonRole::Quiet);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    layout->addWidget(m_progress);
    layout->addWidget(m_stop);
    applyMeasures();
    connect(m_stop, &QPushButton::clicked, this, &ProgressMark::stopRequested);
    hide();
}

void ProgressMark::setProgress(const QString &text, int done, int total) {
    m_text->setText(text);
    m_progress->setRange(0, total);
    m_progress->setValue(done);
}

void ProgressMark::setStoppable(bool isStoppable) {
    m_stop->setEnabled(isStoppable);
}

void ProgressMark::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() != nullptr && (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange))
        applyMeasures();
}

void ProgressMark::applyMeasures() {
    const int unit = Theme::unit(this);
    const int icon = Theme::iconSize(this);
    layout()->setSpacing(unit * 2);
    m_progress->setFixedSize(unit * 28, std::max(6, unit * 3 / 2));
    m_stop->setIcon(Icon::named(u"stop"_s));
    m_stop->setIconSize({icon, icon});
}

} // namespace orlenta::shell
