#include "shell/controls/CutTextMark.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>

#include "shell/controls/TextLabel.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

CutTextMark::CutTextMark(QWidget *parent)
    : QWidget(parent), m_part(new TextLabel({}, TextLabel::Style::Caption, this)) {
    auto *all = new QPushButton(QStringLiteral("Show All"), this);
    all->setToolTip(QStringLiteral("Show and edit the whole text"));
    // The list's keys open the text too; its rows have their own order of controls.
    all->setFocusPolicy(Qt::NoFocus);
    all->setCursor(Qt::ArrowCursor);
    Theme::setRole(all, ButtonRole::Quiet);
    m_part->setWordWrap(false);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(Theme::unit(this), 0, 0, 0);
    layout->addWidget(m_part);
    layout->addWidget(all);
    layout->addStretch();
    connect(all, &QPushButton::clicked, this, &CutTextMark::wholeTextRequested);
}

void CutTextMark::setPart(const QString &part) {
    m_part->setText(part);
}

} // namespace orlenta::shell
