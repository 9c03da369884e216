#include "shell/editor/list/ScriptListView.h"

#include <algorithm>
#include <limits>

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>

#include "shell/editor/list/ScriptAccessibility.h"
#include "shell/editor/list/ScriptListSource.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

constexpr int glideMilliseconds = 120;

} // namespace

ScriptListView::ScriptListView(ScriptListSource &source, ScriptTextField::Factory makeTextField, QWidget *parent)
    : QAbstractScrollArea(parent), m_source(source), m_makeTextField(std::move(makeTextField)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    installScriptAccessibility();
    setAccessibleName(QStringLiteral("Script lines"));
    setAccessibleDescription(QStringLiteral("Up and Down select a line, Return edits its text, Right moves to its "
                                            "controls, Escape returns to the list, F6 goes to the "
                                            "next part of the window"));
    viewport()->setBackgroundRole(QPalette::Window);
    verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll script lines"));
    connect(&m_glide, &QVariantAnimation::valueChanged, this, [this](const QVariant &y) {
        if (const auto index = m_indexes.constFind(m_glidingId); index != m_indexes.constEnd())
            layOutFrom({*index, y.toInt()});
    });
}

void ScriptListView::reload() {
    const std::optional<Anchor> before = visibleAnchor(0);
    std::optional<model::LineId> topId;
    if (before)
        for (LineRow *row : std::as_const(m_rows))
            if (row->y() == before->y && m_indexes.value(row->lineId(), -1) == before->index)
                topId = row->lineId();
    readLines();
    const auto top = topId ? m_indexes.constFind(*topId) : m_indexes.constEnd();
    if (top != m_indexes.constEnd())
        layOutFrom({*top, before->y});
    else
        layOutFrom(anchorAt(std::min(m_scroll, clampedScroll(m_scroll))));
    refreshRows();
}

void ScriptListView::readLines() {
    // Losing the focus may change a row's height. Lay out the rest once all removed rows are gone.
    const QScopedValueRollback guard(m_isLayingOut, true);
    m_indexes.clear();
    m_ids = m_source.lineIds();
    m_indexes.reserve(m_ids.size());
    for (const model::LineId &id : m_ids)
        m_indexes.insert(id, m_indexes.size());
    // Do this before any row is released, because focus handlers look up the height of every line.
    rebuildHeights();
    const QList<model::LineId> shown = m_rows.keys();
    for (const model::LineId &id : shown)
        if (!m_indexes.contains(id))
            release(id);
}

void ScriptListView::rebuildHeights() {
    const int width = viewport()->width();
    if (width != m_layoutWidth)
        m_measured.clear();
    m_layoutWidth = width;
    const RowHeightEstimator estimate(*this, width, m_source.density());
    std::vector<int> heights;
    heights.reserve(static_cast<size_t>(m_ids.size()));
    for (const model::LineId &id : m_ids) {
        const auto known = m_measured.constFind(id);
        if (known != m_measured.constEnd()) {
            heights.push_back(*known);
            continue;
        }
        heights.push_back(estimate.height(m_source.outline(id)));
    }
    m_heights.assign(std::move(heights));
}

void ScriptListView::refreshRows() {
    {
        const QScopedValueRollback guard(m_isLayingOut, true);
        for (LineRow *row : std::as_const(m_rows))
            row->setContent(m_source.content(row->lineId(), m_indexes.value(row->lineId())));
    }
    layOutRows();
    announceFocusLater();
}

void ScriptListView::changeDensity() {
    const std::optional<Anchor> eye = anchorAtEye();
    m_measured.clear();
    m_layoutWidth = -1;
    {
        const QScopedValueRollback guard(m_isLayingOut, true);
        for (LineRow *row : std::as_const(m_rows))
            row->setContent(m_source.content(row->lineId(), m_indexes.value(row->lineId())));
    }
    layOutFrom(eye.value_or(Anchor{0, margin()}));
}

void ScriptListView::refreshRow(const model::LineId &id) {
    if (LineRow *row = rowFor(id))
        row->setContent(m_source.content(id, m_indexes.value(id)));
}

void ScriptListView::ensureVisible(const model::LineId &id) {
    const auto index = m_indexes.constFind(id);
    if (index == m_indexes.constEnd() || viewport()->height() <= 0)
        return;
    // Use the real height, not the estimate.
    const int tall = [&] {
        const QScopedValueRollback guard(m_isLayingOut, true);
        return measure(*index);
    }();
    const LineRow *row = rowFor(id);
    const auto y = row->isVisible() ? row->y() : static_cast<int>(m_heights.offsetOf(*index)) + margin() - m_scroll;
    const int room = viewport()->height();
    const bool coversView = y <= 0 && y + tall >= room;
    if (coversView)
        layOutRows();
    else if (y < 0 || tall > room)
        layOutFrom({*index, margin()});
    else if (y + tall > room)
        layOutFrom({*index, room - tall - margin()});
    else
        layOutRows();
}

void ScriptListView::showAtThird(const model::LineId &id) {
    const auto index = m_indexes.constFind(id);
    if (index == m_indexes.constEnd() || viewport()->height() <= 0)
        return;
    const int target = viewport()->height() / 3;
    m_glide.stop();
    // The style has no duration if the desktop wants no animation.
    if (!isInView(id) || style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0)
        return layOutFrom({*index, target});
    m_glidingId = id;
    m_glide.setDuration(glideMilliseconds);
    m_glide.setStartValue(rowFor(id)->y());
    m_glide.setEndValue(target);
    m_glide.start();
}

void ScriptListView::scrollToTop() {
    layOutFrom({0, margin()});
}

bool ScriptListView::isInView(const model::LineId &id) const {
    const LineRow *row = rowFor(id);
    return row != nullptr && row->isVisible() && row->geometry().intersects(viewport()->rect());
}

int ScriptListView::margin() const {
    return Theme::unit(this);
}

int ScriptListView::clampedScroll(qint64 scroll) const {
    const qint64 most = std::max<qint64>(0, m_heights.total() + 2 * margin() - viewport()->height());
    return static_cast<int>(std::clamp<qint64>(scroll, 0, std::min<qint64>(most, std::numeric_limits<int>::max())));
}

void ScriptListView::scrollContentsBy(int, int) {
    const int target = verticalScrollBar()->value();
    const int shift = target - m_scroll;
    m_glide.stop();
    layOutFrom(visibleAnchor(shift).value_or(anchorAt(target)));
    Q_EMIT scrolled();
}

std::optional<ScriptListView::Anchor> ScriptListView::visibleAnchor(int shift) const {
    std::optional<Anchor> best;
    for (const LineRow *row : m_rows) {
        const int y = row->y() - shift;
        const bool isInView = row->isVisibleTo(viewport()) && y + row->height() > 0 && y < viewport()->height();
        if (isInView && (!best || y < best->y))
            best = Anchor{m_indexes.value(row->lineId()), y};
    }
    return best;
}

std::optional<ScriptListView::Anchor> ScriptListView::anchorAtEye() const {
    const LineRow *current = currentRow();
    if (current == nullptr || !isInView(current->lineId()))
        return visibleAnchor(0);
    return Anchor{m_indexes.value(current->lineId()), current->y()};
}

ScriptListView::Anchor ScriptListView::anchorAt(int scroll) const {
    const qsizetype index = std::max<qsizetype>(0, m_heights.rowAt(scroll - margin()));
    if (m_heights.count() == 0)
        return {};
    return {index, static_cast<int>(m_heights.offsetOf(index) + margin() - scroll)};
}

void ScriptListView::layOutRows() {
    if (!m_isLayingOut)
        layOutFrom(visibleAnchor(0).value_or(anchorAt(m_scroll)));
}

void ScriptListView::layOutFrom(Anchor anchor) {
    if (m_isLayingOut)
        return;
    const QScopedValueRollback guard(m_isLayingOut, true);
    if (m_layoutWidth != viewport()->width())
        rebuildHeights();
    if (m_heights.count() == 0 || viewport()->height() <= 0) {
        updateScrollBar(0);
        return;
    }
    anchor.index = std::clamp<qsizetype>(anchor.index, 0, m_heights.count() - 1);
    // Measuring may shorten the list below its estimated height. Then lay out from the end.
    Span span;
    for (int attempt = 0; attempt < 3; ++attempt) {
        span = spanFrom(anchor);
        const qint64 scroll = m_heights.offsetOf(span.first) + margin() - span.top;
        const int allowed = clampedScroll(scroll);
        if (allowed == scroll)
            break;
        anchor = {span.first, span.top + static_cast<int>(scroll - allowed)};
    }
    releaseOutside(span);
    const auto scroll = static_cast<int>(m_heights.offsetOf(span.first) + margin() - span.top);
    updateScrollBar(scroll);
    place(span);
}

ScriptListView::Span ScriptListView::spanFrom(const Anchor &anchor) {
    const int overscan = viewport()->height() / 8;
    const int bottomEdge = viewport()->height() + overscan;
    Span span{anchor.index, anchor.index, anchor.y};
    int bottom = anchor.y + measure(anchor.index);
    while (span.last + 1 < m_heights.count() && bottom < bottomEdge)
        bottom += measure(++span.last);
    while (span.first > 0 && span.top > -overscan)
        span.top -= measure(--span.first);
    while (span.first < span.last && span.top + m_heights.height(span.first) < -overscan)
        span.top += m_heights.height(span.first++);
    return span;
}

void ScriptListView::place(const Span &span) {
    int y = span.top;
    for (qsizetype index = span.first; index <= span.last; ++index) {
        LineRow *row = realise(index);
        row->setGeometry(0, y, viewport()->width(), m_heights.height(index));
        row->show();
        y += m_heights.height(index);
    }
    for (LineRow *row : std::as_const(m_rows)) {
        const qsizetype index = m_indexes.value(row->lineId());
        if (index < span.first || index > span.last)
            row->move(0, static_cast<int>(m_heights.offsetOf(index) + margin() - m_scroll));
    }
}

void ScriptListView::updateScrollBar(int scroll) {
    QScrollBar *bar = verticalScrollBar();
    m_scroll = scroll;
    const QSignalBlocker blocker(bar);
    bar->setSingleStep(Theme::unit(this) * 6);
    bar->setPageStep(viewport()->height());
    bar->setRange(0, clampedScroll(std::numeric_limits<int>::max()));
    bar->setValue(scroll);
    bar->setVisible(bar->maximum() > 0);
}

int ScriptListView::measure(qsizetype index) {
    LineRow *row = realise(index);
    const int height = row->heightForWidth(viewport()->width());
    m_heights.setHeight(index, height);
    m_measured.insert(row->lineId(), height);
    return height;
}

LineRow *ScriptListView::realise(qsizetype index) {
    const model::LineId id = m_ids.at(index);
    if (LineRow *row = m_rows.value(id))
        return row;
    LineRow *row = takeRow();
    m_rows.insert(id, row);
    row->resize(viewport()->width(), row->height());
    row->setContent(m_source.content(id, index));
    row->setListHasFocus(hasFocus());
    row->setWatch(m_source.watch(id, row, [this, row] { refreshRow(row->lineId()); }));
    return row;
}

LineRow *ScriptListView::takeRow() {
    if (!m_free.empty()) {
        LineRow *row = m_free.back();
        m_free.pop_back();
        return row;
    }
    auto *row = new LineRow(m_makeTextField, viewport());
    connect(row, &LineRow::heightChanged, this, &ScriptListView::layOutRows);
    connect(row, &LineRow::controlsLeft, this, [this] { setFocus(Qt::OtherFocusReason); });
    Q_EMIT rowCreated(row);
    return row;
}

void ScriptListView::release(const model::LineId &id) {
    LineRow *row = m_rows.take(id);
    const QWidget *focus = row->window()->focusWidget();
    if (focus != nullptr && row->isAncestorOf(focus))
        setFocus(Qt::OtherFocusReason);
    row->setWatch({});
    row->hide();
    m_free.push_back(row);
}

void ScriptListView::releaseOutside(const Span &span) {
    const QList<model::LineId> ids = m_rows.keys();
    for (const model::LineId &id : ids) {
        const qsizetype index = m_indexes.value(id, -1);
        const bool isInSpan = index >= span.first && index <= span.last;
        if (!isInSpan && (index < 0 || !m_rows.value(id)->isPinned()))
            release(id);
    }
}

void ScriptListView::resizeEvent(QResizeEvent *event) {
    QAbstractScrollArea::resizeEvent(event);
    layOutRows();
}

void ScriptListView::keyPressEvent(QKeyEvent *event) {
    QScrollBar *bar = verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_PageUp:
        return bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
        return bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_Home:
        return scrollToTop();
    case Qt::Key_End:
        return layOutFrom({m_heights.count() - 1, 0});
    default:
        event->ignore();
    }
}

void ScriptListView::mousePressEvent(QMouseEvent *) {
    Q_EMIT backgroundClicked();
}

void ScriptListView::focusInEvent(QFocusEvent *event) {
    QAbstractScrollArea::focusInEvent(event);
    showFocusOnRows();
    m_announcedLine.reset();
    announceFocusLater();
}

void ScriptListView::focusOutEvent(QFocusEvent *event) {
    QAbstractScrollArea::focusOutEvent(event);
    showFocusOnRows();
}

void ScriptListView::showFocusOnRows() {
    for (LineRow *row : std::as_const(m_rows))
        row->setListHasFocus(hasFocus());
}

LineRow *ScriptListView::currentRow() const {
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [](const LineRow *candidate) { return candidate->content().isCurrent; });
    return row == m_rows.end() ? nullptr : *row;
}

// Queued, so that the row is visible and Qt has announced the list's own focus first.
void ScriptListView::announceFocusLater() {
    if (QAccessible::isActive() && !std::exchange(m_isAnnouncingFocus, true))
        QMetaObject::invokeMethod(this, &ScriptListView::announceFocus, Qt::QueuedConnection);
}

void ScriptListView::announceFocus() {
    m_isAnnouncingFocus = false;
    LineRow *row = hasFocus() ? currentRow() : nullptr;
    if (row == nullptr || m_announcedLine == row->lineId())
        return;
    m_announcedLine = row->lineId();
    QAccessibleEvent event(row, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

void ScriptListView::changeEvent(QEvent *event) {
    QAbstractScrollArea::changeEvent(event);
    // A font change reaches the rows' controls one by one; measure them after the last.
    if (event->type() == QEvent::FontChange)
        QMetaObject::invokeMethod(this, &ScriptListView::remeasure, Qt::QueuedConnection);
}

void ScriptListView::remeasure() {
    m_measured.clear();
    m_layoutWidth = -1;
    refreshRows();
}

bool ScriptListView::focusNextPrevChild(bool next) {
    Q_EMIT stepRequested(next);
    return true;
}

} // namespace orlenta::shell
