#include "shell/controls/CutTextMark.h"

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>

#include "shell/controls/ShownText.h"
#include "shell/controls/TextLabel.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

// A field shows and edits what can be spoken at once as a whole.
constexpr ShownLimits wholeTextLimits{10'000, 200};
constexpr ShownLimits startLimits{1'000, 12};

} // namespace

CutTextMark::CutTextMark(QWidget *field) : QWidget(field), m_part(new TextLabel({}, TextLabel::Style::Caption, this)) {
    auto *all = new QPushButton(QStringLiteral("Show All"), this);
    all->setToolTip(QStringLiteral("Show and edit the whole text"));
    // The keys that edit the text open it, too.
    all->setFocusPolicy(Qt::NoFocus);
    Theme::setRole(all, ButtonRole::Quiet);
    setCursor(Qt::ArrowCursor);
    m_part->setWordWrap(false);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(Theme::unit(this), 0, 0, 0);
    layout->addWidget(m_part);
    layout->addWidget(all);
    layout->addStretch();
    connect(all, &QPushButton::clicked, this, &CutTextMark::wholeTextRequested);
    field->installEventFilter(this);
    hide();
}

bool CutTextMark::isTooLong(qsizetype units) {
    return units > wholeTextLimits.units;
}

qsizetype CutTextMark::shownUnits(qsizetype units) {
    return isTooLong(units) ? startLimits.units : units;
}

QString CutTextMark::fit(const QString &text) {
    const bool isTooMuch = !shownPart(text, wholeTextLimits).isEmpty();
    m_whole = isTooMuch ? text : QString();
    setVisible(isTooMuch);
    if (!isTooMuch)
        return text;
    m_part->setText(shownPart(text, startLimits));
    place();
    return shownStart(text, startLimits);
}

void CutTextMark::place() {
    const int height = sizeHint().height();
    setGeometry(0, parentWidget()->height() - height, parentWidget()->width(), height);
}

bool CutTextMark::eventFilter(QObject *watched, QEvent *event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

} // namespace orlenta::shell
