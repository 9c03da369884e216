#include <QtCore/QMimeData>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/editor/DirectionStrip.h"
#include "shell/editor/LineRow.h"
#include "shell/editor/NotesField.h"
#include "shell/editor/WaveformBarsView.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

QList<QUrl> localFiles(const QMimeData &data) {
    QList<QUrl> files;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls)
        if (url.isLocalFile())
            files.append(url);
    return files;
}

} // namespace

void LineRow::makeDirectionControls() {
    const auto make = [this](const QString &icon, CommandId wish) {
        auto *button = new QToolButton(this);
        button->setAutoRaise(true);
        button->setIcon(Icon::named(icon, Icon::Tint::Muted));
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, wish] { Q_EMIT directionWished(wish); });
        return button;
    };
    m_mode = make(QStringLiteral("microphone"), CommandId::SwitchDirectionMode);
    m_notesButton = make(QStringLiteral("note"), CommandId::EditNotes);
    m_notesButton->setToolTip(tipOf(CommandId::EditNotes));
    setAcceptDrops(true);
}

void LineRow::showDirection() {
    const bool isVoice = m_content.isVoiceDirected;
    m_mode->setIcon(Icon::named(QStringLiteral("microphone"), isVoice ? Icon::Tint::Accent : Icon::Tint::Muted));
    m_mode->setToolTip(isVoice ? tipWithKey(QStringLiteral("Directed by voice; direct by text instead"),
                                            CommandId::SwitchDirectionMode)
                               : tipOf(CommandId::SwitchDirectionMode));
    if (!m_content.direction) {
        if (m_direction != nullptr)
            m_direction->hide();
        return;
    }
    if (m_direction == nullptr) {
        m_direction = new DirectionStrip(this);
        connect(m_direction, &DirectionStrip::wished, this, &LineRow::directionWished);
        connect(m_direction, &DirectionStrip::seekRequested, this, &LineRow::directionSeekRequested);
        for (QWidget *control : m_direction->controls())
            control->installEventFilter(this);
    }
    m_direction->setContent(*m_content.direction);
    m_direction->show();
}

void LineRow::showNotes() {
    // Another window in front is no end: the caret comes back here.
    const bool isOpen = m_notes != nullptr && window()->focusWidget() == m_notes;
    const bool shows = isOpen || !m_content.notes.isEmpty();
    m_notesButton->setIcon(
        Icon::named(QStringLiteral("note"), m_content.notes.isEmpty() ? Icon::Tint::Muted : Icon::Tint::Accent));
    if (shows && m_notes == nullptr)
        makeNotes();
    if (m_notes == nullptr)
        return;
    m_notes->setNotes(m_content.notes);
    m_notes->setVisible(shows);
}

void LineRow::makeNotes() {
    m_notes = new NotesField(this);
    m_notes->installEventFilter(this);
    connect(m_notes, &NotesField::notesEdited, this, &LineRow::notesEdited);
    connect(m_notes, &NotesField::entered, this, &LineRow::notesEntered);
    connect(m_notes, &NotesField::left, this, [this] {
        showNotes();
        layOut();
    });
    nameDirectionControls();
}

void LineRow::editNotes() {
    if (m_notes == nullptr)
        makeNotes();
    m_notes->show();
    m_notes->moveCursor(QTextCursor::End);
    m_notes->setFocus(Qt::OtherFocusReason);
    layOut();
}

void LineRow::nameDirectionControls() {
    const QString line = QStringLiteral("line %1").arg(m_content.number);
    m_mode->setAccessibleName(QStringLiteral("Direction mode of %1").arg(line));
    m_mode->setAccessibleDescription(m_content.isVoiceDirected ? QStringLiteral("Voice") : QStringLiteral("Text"));
    m_notesButton->setAccessibleName(QStringLiteral("Edit notes of %1").arg(line));
    if (m_notes != nullptr)
        m_notes->setAccessibleName(QStringLiteral("Notes of %1").arg(line));
}

QList<QWidget *> LineRow::focusableControls() const {
    QList<QWidget *> controls{m_mode, m_notesButton, m_generate};
    if (m_notes != nullptr)
        controls.append(m_notes);
    if (m_direction != nullptr && !m_direction->isHidden())
        controls.append(m_direction->controls());
    controls.append(QList<QWidget *>{m_play, m_waveform, m_takes});
    return controls;
}

void LineRow::setDropTarget(bool isDropTarget) {
    if (std::exchange(m_isDropTarget, isDropTarget) != isDropTarget)
        update();
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

} // namespace orlenta::shell
