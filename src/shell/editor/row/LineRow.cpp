#include "shell/editor/row/LineRow.h"

#include <algorithm>
#include <utility>

#include <QtCore/QMimeData>
#include <QtGui/QAccessible>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>

#include "shell/controls/ShownText.h"
#include "shell/editor/row/AudioPlayer.h"
#include "shell/editor/row/DirectionStrip.h"
#include "shell/editor/row/LineHeader.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/row/RowStatusMark.h"
#include "shell/editor/row/TakeStrip.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QList<QUrl> localFiles(const QMimeData &data) {
    QList<QUrl> files = data.urls();
    files.removeIf([](const QUrl &url) { return !url.isLocalFile(); });
    return files;
}

} // namespace

LineRow::LineRow(const ScriptTextField::Factory &makeTextField, QWidget *parent)
    : QWidget(parent), m_text(makeTextField(this)), m_header(new LineHeader(this)), m_takes(new TakeStrip(this)),
      m_status(new RowStatusMark(this)) {
    setAcceptDrops(true);
    connectText();
    connect(m_header, &LineHeader::commandRequested, this, &LineRow::commandRequested);
    connect(&m_takes->player(), &AudioPlayer::commandRequested, this, &LineRow::commandRequested);
    connect(&m_takes->player(), &AudioPlayer::seekRequested, this, &LineRow::seekRequested);
    connect(m_takes, &TakeStrip::menuRequested, this, &LineRow::takeMenuRequested);
    handleKeysOf(m_header->controls());
    handleKeysOf(m_takes->controls());
}

LineRow::~LineRow() {
    disconnect(m_watch);
}

void LineRow::connectText() {
    connect(m_text, &ScriptTextField::editRequested, this, &LineRow::editRequested);
    connect(m_text, &ScriptTextField::clicked, this, &LineRow::textClicked);
    connect(m_text, &ScriptTextField::wholeTextRequested, this, &LineRow::wholeTextRequested);
}

void LineRow::handleKeysOf(const QList<QWidget *> &controls) {
    for (QWidget *control : controls)
        control->installEventFilter(this);
}

void LineRow::setWatch(const QMetaObject::Connection &watch) {
    disconnect(m_watch);
    m_watch = watch;
}

void LineRow::setContent(const LineRowContent &content) {
    const LineRowContent before = std::exchange(m_content, content);
    const bool isOtherLine = before.id != content.id;
    if (isOtherLine)
        m_text->forgetText();
    if (isOtherLine)
        m_isOpen = false;
    m_text->setContent(content.text);
    m_header->setContent(content.number, content.header);
    m_takes->setContent(content.number, content.takes);
    m_status->setContent(content.number, content.status, content.statusWords);
    showDirection();
    // Undo must not bring back another line's notes.
    if (m_notes != nullptr && isOtherLine)
        m_notes->document()->clearUndoRedoStacks();
    showNotes();
    showNames(before);
    showDensity();
    showBackground();
    if (!isOtherLine && before.isSelected != content.isSelected) {
        QAccessibleEvent event(this, content.isSelected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
        QAccessible::updateAccessibility(&event);
    }
    const Qt::FocusPolicy policy = content.isCurrent ? Qt::TabFocus : Qt::NoFocus;
    for (QWidget *control : controls())
        control->setFocusPolicy(control != m_notes ? policy : content.isCurrent ? Qt::StrongFocus : Qt::ClickFocus);
    layOut();
    update();
}

void LineRow::setProgress(controller::AudioKind kind, double progress) {
    if (kind == controller::AudioKind::Generated)
        m_takes->player().setProgress(progress);
    else if (m_direction != nullptr)
        m_direction->player().setProgress(progress);
}

void LineRow::showBackground() {
    const ThemeColors &colors = ThemeColors::of(palette());
    const QColor background = rowcard::background(look(), m_content, *this);
    const QColor &stripe = m_content.header.stripe;
    m_header->setBackground(background);
    m_takes->player().setColor(stripe.isValid() ? stripe : colors.accent, background);
}

void LineRow::showDirection() {
    if (!m_content.direction) {
        if (m_direction != nullptr)
            m_direction->hide();
        return;
    }
    if (m_direction == nullptr) {
        m_direction = new DirectionStrip(this);
        connect(m_direction, &DirectionStrip::commandRequested, this, &LineRow::commandRequested);
        connect(&m_direction->player(), &AudioPlayer::seekRequested, this, &LineRow::seekRequested);
        handleKeysOf(m_direction->controls());
    }
    m_direction->setContent(m_content.number, *m_content.direction);
    m_direction->setVisible(density() == RowDensity::Comfortable);
}

RowDensity LineRow::density() const {
    return m_isOpen || m_content.text.isEditing ? RowDensity::Comfortable : m_content.density;
}

RowLook LineRow::look() const {
    return {density(), m_isHovered, m_isDropTarget, m_content.text.isEditing || hasListFocus()};
}

void LineRow::showDensity() {
    const RowDensity shown = density();
    const bool isCompact = shown == RowDensity::Compact;
    m_header->setDensity(shown);
    m_header->setActive(m_isHovered || m_content.isCurrent);
    m_takes->setDensity(shown);
    // Hiding the focused text would otherwise count as Tab, which selects the next line.
    if (isCompact && m_text->hasFocus())
        Q_EMIT controlsLeft();
    m_text->setVisible(!isCompact);
    // A row without room for the text has the whole of it, and the notes, in its tool tip.
    const QString text =
        m_content.notes.isEmpty() ? m_content.text.text : m_content.text.text + u"\n\n"_s + m_content.notes;
    setToolTip(isCompact ? shownTip(text) : QString());
}

void LineRow::setOpen(bool isOpen) {
    if (std::exchange(m_isOpen, isOpen) == isOpen || m_content.density == RowDensity::Comfortable)
        return;
    showDensity();
    showDirection();
    showNotes();
    showBackground();
    layOut();
    update();
}

void LineRow::setHovered(bool isHovered) {
    if (std::exchange(m_isHovered, isHovered) == isHovered)
        return;
    m_header->setActive(m_isHovered || m_content.isCurrent);
    showBackground();
    update();
}

void LineRow::showNotes() {
    // Ask the window, not the application: the caret returns here after a visit to another window.
    const bool isOpen = m_notes != nullptr && window()->focusWidget() == m_notes;
    const bool shows = (isOpen || !m_content.notes.isEmpty()) && density() == RowDensity::Comfortable;
    if (shows && m_notes == nullptr)
        makeNotes();
    if (m_notes == nullptr)
        return;
    m_notes->setNotes(m_content.notes);
    m_notes->setVisible(shows);
}

void LineRow::makeNotes() {
    m_notes = new NotesField(this);
    m_notes->setAccessibleName(u"Notes of line %1"_s.arg(m_content.number));
    handleKeysOf({m_notes});
    connect(m_notes, &NotesField::notesEdited, this, &LineRow::notesEdited);
    connect(m_notes, &NotesField::wholeTextRequested, this, &LineRow::wholeNotesRequested);
    connect(m_notes, &NotesField::entered, this, &LineRow::notesEntered);
    connect(m_notes, &NotesField::left, this, [this] {
        showNotes();
        layOut();
    });
}

void LineRow::editNotes() {
    setOpen(true);
    if (m_notes == nullptr)
        makeNotes();
    if (m_notes->isCut()) {
        Q_EMIT wholeNotesRequested();
        return;
    }
    m_notes->show();
    m_notes->moveCursor(QTextCursor::End);
    m_notes->setFocus(Qt::OtherFocusReason);
    layOut();
}

void LineRow::showNames(const LineRowContent &before) {
    const QString audio = m_content.takes.audio ? u"Has audio"_s : u"No audio"_s;
    if (accessibleDescription() != audio)
        setAccessibleDescription(audio);
    const QString number = QString::number(m_content.number);
    if (before.number != m_content.number) {
        m_text->setAccessibleName(u"Text of line %1"_s.arg(number));
        if (m_notes != nullptr)
            m_notes->setAccessibleName(u"Notes of line %1"_s.arg(number));
    }
    if (before.id == m_content.id && before.number == m_content.number && before.text.text == m_content.text.text &&
        before.header.castName == m_content.header.castName)
        return;
    const QString cast = m_content.header.castName.isEmpty() ? u"no voice"_s : shownName(m_content.header.castName);
    const QString text = shownStart(m_content.text.text, shownMessage).simplified();
    setAccessibleName(u"Line %1, %2, %3"_s.arg(number, cast, text.isEmpty() ? u"empty"_s : text));
}

bool LineRow::isPinned() const {
    // Ask the window, not the application: the focus returns here after a visit to another window.
    const QWidget *focus = window()->focusWidget();
    return focus != nullptr && isAncestorOf(focus);
}

void LineRow::setListHasFocus(bool listHasFocus) {
    if (std::exchange(m_listHasFocus, listHasFocus) != listHasFocus)
        update();
}

void LineRow::setDropTarget(bool isDropTarget) {
    if (std::exchange(m_isDropTarget, isDropTarget) == isDropTarget)
        return;
    showBackground();
    update();
}

void LineRow::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        Q_EMIT clicked(event->modifiers());
}

void LineRow::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint point = event->position().toPoint();
    if (density() == RowDensity::Comfortable)
        return Q_EMIT editRequested(m_text->viewport()->mapFrom(this, point));
    // The text opens with the same first line.
    const int margin = static_cast<int>(m_text->document()->documentMargin());
    Q_EMIT editRequested(QPoint(std::max(0, point.x() - m_places.text.left()) + margin, margin + 1));
}

void LineRow::contextMenuEvent(QContextMenuEvent *event) {
    Q_EMIT menuRequested(event->globalPos());
}

void LineRow::dragEnterEvent(QDragEnterEvent *event) {
    if (localFiles(*event->mimeData()).isEmpty())
        return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setDropTarget(true);
}

void LineRow::dragLeaveEvent(QDragLeaveEvent *) {
    setDropTarget(false);
}

void LineRow::dropEvent(QDropEvent *event) {
    setDropTarget(false);
    const QList<QUrl> files = localFiles(*event->mimeData());
    if (files.isEmpty())
        return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT filesDropped(files);
}

void LineRow::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showBackground();
    if (event->type() != QEvent::FontChange)
        return;
    m_text->applyScriptFont();
    Q_EMIT heightChanged();
}

bool LineRow::event(QEvent *event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        setHovered(event->type() == QEvent::Enter);
    // A hidden row gets no further event of the pointer.
    if (event->type() == QEvent::Hide)
        setHovered(false);
    return QWidget::event(event);
}

void LineRow::closeWhenLeft() {
    if (!isPinned())
        setOpen(false);
}

bool LineRow::eventFilter(QObject *watched, QEvent *event) {
    // Queued: the focus may stay within the row.
    if (event->type() == QEvent::FocusOut && m_isOpen)
        QMetaObject::invokeMethod(this, &LineRow::closeWhenLeft, Qt::QueuedConnection);
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto *control = qobject_cast<QWidget *>(watched);
    auto *button = qobject_cast<QAbstractButton *>(watched);
    const auto &key = *static_cast<QKeyEvent *>(event);
    // Arrow keys move the playhead in the waveform and the caret in the notes.
    const bool takesArrows = button == nullptr;
    const bool isArrow = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    const bool isSpace = key.key() == Qt::Key_Space;
    if (isKeyOf(key, CommandId::LeaveControls)) {
        Q_EMIT controlsLeft();
    } else if (button != nullptr && !isSpace && isKeyOf(key, CommandId::PressControl)) {
        // Otherwise the list would handle Return and edit the line's text.
        if (!key.isAutoRepeat())
            button->click();
    } else if (takesArrows && isArrow) {
        return QWidget::eventFilter(watched, event);
    } else if (isKeyOf(key, CommandId::NextControl)) {
        moveFocus(control, 1);
    } else if (isKeyOf(key, CommandId::PreviousControl)) {
        moveFocus(control, -1);
    } else {
        return QWidget::eventFilter(watched, event);
    }
    return true;
}

QList<QWidget *> LineRow::controls() const {
    QList<QWidget *> all = m_header->controls();
    if (m_notes != nullptr)
        all.append(m_notes);
    if (m_direction != nullptr)
        all.append(m_direction->controls());
    return all + m_takes->controls();
}

void LineRow::focusControls() {
    setOpen(true);
    moveFocus(nullptr, 1);
}

void LineRow::moveFocus(QWidget *from, int step) {
    QList<QWidget *> open = controls();
    open.removeIf([this, from](const QWidget *control) {
        return !control->isVisibleTo(this) || (!control->isEnabled() && control != from);
    });
    if (open.isEmpty())
        return;
    const qsizetype at = open.indexOf(from);
    const qsizetype next = at < 0 ? 0 : (at + step + open.size()) % open.size();
    open.at(next)->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

RowPlaces LineRow::placesFor(int width) const {
    const int unit = Theme::unit(this);
    if (density() == RowDensity::Compact)
        return RowPlaces::compact(width, unit);
    const auto shown = [](auto *part) { return part == nullptr || part->isHidden() ? nullptr : part; };
    return RowPlaces::comfortable({m_header, m_text, shown(m_notes), shown(m_direction), shown(m_takes)}, width, unit);
}

void LineRow::layOut() {
    m_places = placesFor(width());
    m_header->setGeometry(m_places.header);
    m_text->setGeometry(m_places.text);
    if (m_notes != nullptr)
        m_notes->setGeometry(m_places.notes);
    if (m_direction != nullptr)
        m_direction->setGeometry(m_places.direction);
    m_takes->setGeometry(m_places.takes);
    m_status->setGeometry(m_places.status);
    if (m_places.height != height() && isVisible())
        Q_EMIT heightChanged();
}

void LineRow::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        layOut();
}

void LineRow::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    rowcard::paint(painter, look(), m_content, m_places, *this);
    if (density() == RowDensity::Compact)
        rowcard::paintText(painter, m_content, m_places, *this);
}

} // namespace orlenta::shell
