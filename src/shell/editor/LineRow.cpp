#include "shell/editor/LineRow.h"

#include <algorithm>
#include <cmath>

#include <QtGui/QAccessible>
#include <QtGui/QActionGroup>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/editor/BusyIndicator.h"
#include "shell/editor/DirectionStrip.h"
#include "shell/editor/NotesField.h"
#include "shell/editor/WaveformBarsView.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

// Shown until the peaks have been extracted: an even, quiet ripple.
const QList<qreal> &placeholderBars() {
    static const QList<qreal> heights{4, 6, 9, 7, 5, 8, 11, 8, 5, 7, 10, 6};
    return heights;
}

} // namespace

LineRow::LineRow(const ScriptTextField::Factory &makeTextField, QWidget *parent) : QWidget(parent) {
    makeControls(makeTextField);
    makeDirectionControls();
    connect(m_text, &ScriptTextField::textEdited, this, &LineRow::textEdited);
    connect(m_text, &ScriptTextField::editRequested, this, &LineRow::editRequested);
    connect(m_text, &ScriptTextField::clicked, this,
            [this](Qt::KeyboardModifiers modifiers) { Q_EMIT clicked(modifiers, true); });
    connect(m_generate, &QPushButton::clicked, this, &LineRow::generateRequested);
    connect(m_play, &QToolButton::clicked, this, [this] {
        if (m_content.playback == RowPlayback::Playing)
            Q_EMIT stopRequested();
        else
            Q_EMIT playRequested();
    });
    connect(m_waveform, &WaveformBarsView::seekRequested, this, &LineRow::seekRequested);
    connect(m_takes, &QToolButton::clicked, this, &LineRow::openTakeMenu);
    for (QWidget *control : {static_cast<QWidget *>(m_generate), static_cast<QWidget *>(m_play),
                             static_cast<QWidget *>(m_waveform), static_cast<QWidget *>(m_takes)})
        control->installEventFilter(this);
    applyColors();
}

LineRow::~LineRow() {
    disconnect(m_watch);
}

void LineRow::makeControls(const ScriptTextField::Factory &makeTextField) {
    m_text = makeTextField(this);
    m_voiceHint = new QLabel(QStringLiteral("Select a voice in the inspector to generate"), this);
    m_voiceHint->setWordWrap(true);
    m_busy = new BusyIndicator(this);
    m_generate = new QPushButton(this);
    m_play = new QToolButton(this);
    m_waveform = new WaveformBarsView(this);
    m_waveform->setFallbackHeights(placeholderBars());
    m_waveform->setToolTip(QStringLiteral("Click to play from here (Left, Right, Home, End; Space plays)"));
    m_duration = new QLabel(this);
    m_takes = new QToolButton(this);
    m_takes->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_takes->setToolTip(QStringLiteral("Choose the take in use (Return)"));
    m_play->setToolTip(tipWithKey(QStringLiteral("Play this line"), CommandId::PlaySelection));
    // The mark that a menu opens stands behind the text.
    m_takes->setLayoutDirection(layoutDirection() == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight);
}

void LineRow::setWatch(const QMetaObject::Connection &watch) {
    disconnect(m_watch);
    m_watch = watch;
}

void LineRow::setContent(const LineRowContent &content) {
    const LineRowContent before = std::exchange(m_content, content);
    showText(before);
    showGeneration();
    showAudio();
    showDirection();
    // What was written on another line must not come back on this one.
    if (m_notes != nullptr && before.id != content.id)
        m_notes->document()->clearUndoRedoStacks();
    showNotes();
    if (before.id != content.id || before.number != content.number || before.castName != content.castName ||
        before.playback != content.playback || before.isVoiceDirected != content.isVoiceDirected ||
        before.duration != content.duration)
        showNames();
    else if (before.text != content.text)
        nameRow();
    if (before.id == content.id && before.isSelected != content.isSelected)
        tellSelection();
    const Qt::FocusPolicy policy = content.isCurrent ? Qt::TabFocus : Qt::NoFocus;
    for (QWidget *control : focusableControls())
        control->setFocusPolicy(control != m_notes ? policy : content.isCurrent ? Qt::StrongFocus : Qt::ClickFocus);
    layOut();
    update();
}

void LineRow::setProgress(RowAudio audio, double progress) {
    if (audio == RowAudio::Direction) {
        if (m_direction != nullptr && m_content.direction) {
            m_content.direction->progress = progress;
            m_direction->setProgress(progress);
        }
    } else if (m_content.playback != RowPlayback::Idle) {
        m_content.progress = progress;
        m_waveform->setProgress(progress, m_content.playback);
    }
}

void LineRow::showText(const LineRowContent &before) {
    const bool isOtherLine = before.id != m_content.id;
    if (isOtherLine)
        m_text->setAllowsEditing(false);
    const bool wasFlushed = before.typingFlushVersion != m_content.typingFlushVersion;
    // While a key is being handled the field is ahead of the line; only a line that has changed overrules it.
    const bool hasNewText = before.text != m_content.text || wasFlushed;
    if (isOtherLine || (hasNewText && m_text->sourceText() != m_content.text)) {
        const controller::TextRange selection = m_text->sourceSelection();
        m_text->setSourceText(m_content.text);
        if (m_content.isEditing)
            m_text->setSourceSelection(m_content.textSelection.value_or(selection));
    } else if (wasFlushed) {
        m_text->clearTypingUndo();
    }
    m_text->setAllowsEditing(m_content.isEditing);
}

void LineRow::showGeneration() {
    const bool isGenerating = m_content.generation == RowGeneration::Generating;
    m_voiceHint->setVisible(m_content.generation == RowGeneration::NoVoice);
    m_generate->setVisible(m_content.generation != RowGeneration::NoVoice);
    m_busy->setVisible(isGenerating);
    const bool isFirst = !m_content.isSpoken;
    const QString text = isGenerating ? QStringLiteral("Generating...")
                         : isFirst    ? QStringLiteral("Generate")
                                      : QStringLiteral("Regenerate");
    if (m_generate->text() == text)
        return;
    m_generate->setText(text);
    m_generate->setAccessibleDescription(text);
    m_generate->setEnabled(!isGenerating);
    Theme::setRole(m_generate, isFirst ? ButtonRole::Normal : ButtonRole::Quiet);
    m_generate->setIcon(
        isGenerating ? QIcon() : Icon::named(isFirst ? QStringLiteral("waveform") : QStringLiteral("arrow-clockwise")));
    m_generate->setToolTip(
        tipWithKey(isFirst ? QStringLiteral("Speak this line") : QStringLiteral("Speak this line again, as a new take"),
                   CommandId::Generate));
}

void LineRow::showAudio() {
    const bool shows = m_content.hasAudio;
    m_play->setVisible(shows);
    m_waveform->setVisible(shows);
    m_duration->setVisible(shows);
    showTakes();
    if (!shows)
        return;
    const bool isPlaying = m_content.playback == RowPlayback::Playing;
    m_play->setIcon(Icon::named(isPlaying ? QStringLiteral("stop") : QStringLiteral("play"), Icon::Tint::Accent));
    m_play->setToolTip(isPlaying ? tipWithKey(QStringLiteral("Stop"), CommandId::PlaySelection)
                                 : tipWithKey(QStringLiteral("Play this line"), CommandId::PlaySelection));
    m_waveform->setSamples(m_content.waveform);
    m_waveform->setShowsProgress(m_content.playback != RowPlayback::Idle);
    m_waveform->setProgress(m_content.playback == RowPlayback::Idle ? 0.0 : m_content.progress, m_content.playback);
    m_duration->setText(m_content.duration);
    const QColor accent = ThemeColors::of(palette()).accent;
    m_waveform->setColor(m_content.stripe.isValid() ? m_content.stripe : accent, ground());
}

QColor LineRow::ground() const {
    const ThemeColors &colors = ThemeColors::of(palette());
    return m_content.isSelected || m_isDropTarget ? colors.surfaceSelected : colors.surface;
}

void LineRow::tellSelection() {
    QAccessibleEvent event(this, m_content.isSelected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
    QAccessible::updateAccessibility(&event);
}

void LineRow::showTakes() {
    m_takes->setVisible(!m_content.takes.isEmpty());
    QString text = QStringLiteral("Choose Take");
    if (m_content.activeTake >= 0) {
        text = m_content.takes.at(m_content.activeTake).title;
        if (m_content.takes.size() > 1)
            text = QStringLiteral("%1 of %2").arg(text).arg(m_content.takes.size());
        if (!m_content.hasAudio)
            text = QStringLiteral("%1, file missing").arg(text);
    }
    m_takes->setText(text);
    const QString name = QStringLiteral("Take of line %1, %2").arg(QString::number(m_content.number), text);
    if (m_takes->accessibleName() != name)
        m_takes->setAccessibleName(name);
}

void LineRow::showNames() {
    const QString line = QStringLiteral("line %1").arg(m_content.number);
    nameRow();
    m_text->setAccessibleName(QStringLiteral("Text of %1").arg(line));
    m_generate->setAccessibleName(QStringLiteral("Generate %1").arg(line));
    m_play->setAccessibleName(
        (m_content.playback == RowPlayback::Playing ? QStringLiteral("Stop %1") : QStringLiteral("Play %1")).arg(line));
    m_waveform->setAccessibleName(QStringLiteral("Playhead of %1").arg(line));
    m_duration->setAccessibleName(QStringLiteral("Duration of %1, %2").arg(line, m_content.duration));
    nameDirectionControls();
}

void LineRow::nameRow() {
    const QString cast = m_content.castName.isEmpty() ? QStringLiteral("no voice") : m_content.castName;
    const QString text = m_content.text.simplified();
    setAccessibleName(
        QStringLiteral("Line %1, %2, %3")
            .arg(QString::number(m_content.number), cast, text.isEmpty() ? QStringLiteral("empty") : text));
}

void LineRow::applyColors() {
    const ThemeColors &colors = ThemeColors::of(palette());
    m_takes->setIcon(Icon::named(QStringLiteral("chevron-down"), Icon::Tint::Muted));
    for (QLabel *label : {m_voiceHint, m_duration}) {
        QPalette muted = palette();
        muted.setColor(QPalette::WindowText, colors.textMuted);
        label->setPalette(muted);
    }
    const int icon = Theme::iconSize(this);
    m_generate->setIconSize({icon, icon});
    m_takes->setIconSize({icon * 3 / 4, icon * 3 / 4});
    m_play->setIconSize({icon * 5 / 4, icon * 5 / 4});
    m_mode->setIconSize({icon, icon});
    m_notesButton->setIconSize({icon, icon});
    const int unit = Theme::unit(this);
    m_waveform->setMaxBarHeight(unit * 6.0);
    m_waveform->setBars(std::max(1.5, unit / 2.0), std::max(1.0, unit * 0.375));
}

bool LineRow::isPinned() const {
    // Another window in front doesn't take it: it comes back here.
    const QWidget *focus = window()->focusWidget();
    return m_isMenuOpen || (focus != nullptr && isAncestorOf(focus));
}

void LineRow::setListHasFocus(bool listHasFocus) {
    if (m_listHasFocus == listHasFocus)
        return;
    m_listHasFocus = listHasFocus;
    update();
}

void LineRow::openTakeMenu() {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(m_takes->accessibleName());
    auto *group = new QActionGroup(menu);
    for (qsizetype index = 0; index < m_content.takes.size(); ++index) {
        const TakeChoice &take = m_content.takes.at(index);
        QAction *action = menu->addAction(
            take.detail.isEmpty() ? take.title : QStringLiteral("%1  ·  %2").arg(take.title, take.detail));
        action->setCheckable(true);
        action->setChecked(index == m_content.activeTake);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, id = take.id] { Q_EMIT takeChosen(id); });
    }
    menu->addSeparator();
    menu->addAction(Icon::named(QStringLiteral("trash")), QStringLiteral("Delete Generated Audio"), this,
                    &LineRow::deleteTakeRequested)
        ->setEnabled(m_content.activeTake >= 0);
    m_isMenuOpen = true;
    connect(menu, &QMenu::aboutToHide, this, [this] { m_isMenuOpen = false; });
    menu->popup(m_takes->mapToGlobal(QPoint(0, m_takes->height())));
}

int LineRow::heightForWidth(int width) const {
    return placesFor(width).height;
}

void LineRow::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        Q_EMIT clicked(event->modifiers(), false);
}

void LineRow::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        Q_EMIT editRequested(m_text->viewport()->mapFrom(this, event->position().toPoint()));
}

void LineRow::contextMenuEvent(QContextMenuEvent *event) {
    Q_EMIT menuRequested(event->globalPos());
}

void LineRow::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (m_text == nullptr || (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange))
        return;
    applyColors();
    m_text->applyScriptFont();
    if (!m_content.id.isNull())
        showAudio();
    if (event->type() == QEvent::FontChange)
        Q_EMIT heightChanged();
}

bool LineRow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto *control = qobject_cast<QWidget *>(watched);
    const auto &key = *static_cast<QKeyEvent *>(event);
    // In the waveform the arrows move the playhead, in the notes the caret.
    const bool takesArrows = qobject_cast<WaveformBarsView *>(control) != nullptr || control == m_notes;
    const bool isArrow = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    if (isKeyOf(key, CommandId::LeaveControls))
        Q_EMIT controlsLeft();
    else if (pressControl(control, key))
        return true;
    else if (takesArrows && isArrow)
        return QWidget::eventFilter(watched, event);
    else if (isKeyOf(key, CommandId::NextControl))
        moveFocus(control, 1);
    else if (isKeyOf(key, CommandId::PreviousControl))
        moveFocus(control, -1);
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

// The list would take these keys for the line's text and its take.
bool LineRow::pressControl(QWidget *control, const QKeyEvent &event) {
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool isPlain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!isPlain || (!isReturn && event.key() != Qt::Key_Space))
        return false;
    auto *button = qobject_cast<QAbstractButton *>(control);
    const bool isWaveform = qobject_cast<WaveformBarsView *>(control) != nullptr;
    if (!isWaveform && (button == nullptr || !isReturn))
        return false;
    if (event.isAutoRepeat())
        return true;
    if (button != nullptr)
        button->click();
    else if (control != m_waveform)
        Q_EMIT directionWished(CommandId::PlayDirection);
    else
        m_play->click();
    return true;
}

void LineRow::focusControls() {
    moveFocus(nullptr, 1);
}

void LineRow::moveFocus(QWidget *from, int step) {
    QList<QWidget *> controls;
    for (QWidget *control : focusableControls())
        if (!control->isHidden() && (control->isEnabled() || control == from))
            controls.append(control);
    if (controls.isEmpty())
        return;
    const qsizetype at = controls.indexOf(from);
    const qsizetype next = at < 0 ? 0 : (at + step + controls.size()) % controls.size();
    controls.at(next)->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void LineRow::layOut() {
    m_places = placesFor(width());
    const LineRowPlaces &places = m_places;
    m_text->setGeometry(places.text);
    m_mode->setGeometry(places.mode);
    m_notesButton->setGeometry(places.notesButton);
    m_generate->setGeometry(places.generate);
    if (m_notes != nullptr)
        m_notes->setGeometry(places.notes);
    if (m_direction != nullptr)
        m_direction->setGeometry(places.direction);
    m_voiceHint->setGeometry(places.voiceHint);
    m_busy->setGeometry(places.busy);
    m_play->setGeometry(places.play);
    m_waveform->setGeometry(places.waveform);
    m_duration->setGeometry(places.duration);
    m_takes->setGeometry(places.takes);
    if (places.height != height() && isVisible())
        Q_EMIT heightChanged();
}

void LineRow::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        layOut();
}

void LineRow::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    const LineRowPlaces &places = m_places;
    const qreal radius = Theme::radius(this) * 1.3;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(places.card).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(card, radius, radius);
    const bool isMarked = m_content.isSelected || m_isDropTarget;
    painter.fillPath(outline, ground());
    if (m_content.stripe.isValid()) {
        painter.save();
        painter.setClipPath(outline);
        painter.fillRect(places.stripe, m_content.stripe);
        painter.restore();
    }
    const bool hasKeyboard = m_content.isEditing || hasListFocus();
    QPen border(isMarked ? colors.accent : colors.border, hasKeyboard || m_isDropTarget ? 2.0 : 1.0);
    if (m_isDropTarget)
        border.setStyle(Qt::DashLine);
    painter.setPen(border);
    painter.drawPath(outline);

    painter.setFont(nameFont());
    painter.setPen(colors.textMuted);
    painter.drawText(places.number, Qt::AlignVCenter | Qt::AlignLeft, QString::number(m_content.number));
    painter.setPen(m_content.stripe.isValid() ? readableOn(ground(), m_content.stripe) : colors.textMuted);
    const QString name = m_content.castName.isEmpty() ? QStringLiteral("No voice") : m_content.castName;
    painter.drawText(places.name, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(name, Qt::ElideRight, places.name.width()));
}

} // namespace orlenta::shell
