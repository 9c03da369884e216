#include <algorithm>
#include <cmath>

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/editor/BusyIndicator.h"
#include "shell/editor/DirectionStrip.h"
#include "shell/editor/LineRow.h"
#include "shell/editor/NotesField.h"
#include "shell/editor/WaveformBarsView.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

QFont LineRow::nameFont() const {
    QFont name = font();
    name.setWeight(QFont::DemiBold);
    return name;
}

LineRowPlaces LineRow::placesFor(int width) const {
    const int unit = Theme::unit(this);
    LineRowPlaces places;
    places.card = QRect(unit * 3, unit, std::max(width - unit * 6, unit * 20), 0);
    const int stripe = std::max(4, unit);
    const QRect inner = places.card.adjusted(stripe + unit * 3, unit * 2, -unit * 3, 0);
    int y = placeHeader(places, inner);
    // The fields have a margin of their own; their text lines up with the header.
    const int outset = static_cast<int>(m_text->document()->documentMargin());
    const QRect textColumn = inner.adjusted(-outset, 0, outset, 0);
    const auto below = [&](const QRect &column, int height) {
        const QRect place(column.left(), y, column.width(), height);
        y = place.bottom() + 1;
        return place;
    };
    places.text = below(textColumn, m_text->heightForTextWidth(textColumn.width()));
    if (m_notes != nullptr && !m_notes->isHidden())
        places.notes = below(textColumn, m_notes->heightForTextWidth(textColumn.width()));
    if (m_direction != nullptr && !m_direction->isHidden()) {
        y += unit;
        places.direction = below(inner, m_direction->heightForWidth(inner.width()));
    }
    if (m_content.hasAudio || !m_content.takes.isEmpty()) {
        placeAudio(places, QRect(inner.left(), y + unit, inner.width(), 0));
        y = std::max({places.play.bottom(), places.waveform.bottom(), places.takes.bottom()}) + 1;
    }
    places.card.setHeight(y + unit * 2 - places.card.top());
    places.stripe = QRect(places.card.left(), places.card.top(), stripe, places.card.height());
    places.height = places.card.bottom() + 1 + unit;
    return places;
}

int LineRow::placeHeader(LineRowPlaces &places, const QRect &inner) const {
    const int unit = Theme::unit(this);
    const QFontMetrics names(nameFont());
    const QSize action = m_generate->sizeHint();
    const QSize bare = m_mode->sizeHint();
    const int headerHeight = std::max({action.height(), bare.height(), names.height()});
    int y = inner.top();
    int right = inner.right() + 1;
    const auto fromRight = [&](const QSize &size, int gap) {
        const QRect place(right - size.width(), y + (headerHeight - size.height()) / 2, size.width(), size.height());
        right = place.left() - gap;
        return place;
    };
    const int numberWidth = std::max(names.horizontalAdvance(QString::number(m_content.number)) + unit * 2, unit * 6);
    places.number = QRect(inner.left(), y, numberWidth, headerHeight);
    if (m_content.generation != RowGeneration::NoVoice)
        places.generate = fromRight(action, unit);
    places.notesButton = fromRight(bare, 0);
    places.mode = fromRight(bare, unit * 2);
    bool hintBelow = false;
    if (m_content.generation == RowGeneration::NoVoice) {
        const int wanted = m_voiceHint->fontMetrics().horizontalAdvance(m_voiceHint->text()) + unit;
        hintBelow = wanted > right - inner.left() - numberWidth - unit * 20;
        if (!hintBelow)
            places.voiceHint = fromRight(QSize(wanted, headerHeight), unit * 2);
    } else if (m_content.generation == RowGeneration::Generating) {
        places.busy = fromRight(m_busy->sizeHint(), unit * 2);
    }
    const int nameLeft = places.number.right() + 1;
    places.name = QRect(nameLeft, y, std::max(0, right - nameLeft), headerHeight);
    y += headerHeight + unit;
    if (hintBelow) {
        const int tall = m_voiceHint->heightForWidth(inner.width());
        places.voiceHint = QRect(inner.left(), y, inner.width(), tall);
        y += tall + unit;
    }
    return y;
}

void LineRow::placeAudio(LineRowPlaces &places, const QRect &inner) const {
    const int unit = Theme::unit(this);
    const QSize play = m_play->sizeHint();
    const QSize takes = m_takes->isHidden() ? QSize() : m_takes->sizeHint();
    const int waveformHeight = m_waveform->sizeHint().height();
    const int tall = std::max({play.height(), takes.height(), waveformHeight});
    const auto centred = [&](int left, const QSize &size) {
        return QRect(QPoint(left, inner.top() + (tall - size.height()) / 2), size);
    };
    const int outset = unit;
    places.play = centred(inner.left() - outset, play);
    int right = inner.right() + 1;
    if (!takes.isEmpty()) {
        places.takes = centred(right - takes.width(), takes);
        right -= takes.width() + unit;
    }
    const QSize shown = m_duration->sizeHint();
    const int digits = m_duration->fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + unit;
    const QSize durationShown(std::max(digits, shown.width()), shown.height());
    places.duration = centred(right - durationShown.width(), durationShown);
    right -= durationShown.width() + unit * 2;
    const int left = places.play.right() + 1 + unit * 2;
    places.waveform = centred(left, QSize(std::max(unit * 8, right - left), waveformHeight));
}

LineRow::Estimator::Estimator(const QWidget *list, int width) {
    const int unit = Theme::unit(list);
    const QFontMetrics text(Theme::scriptFont());
    const int textWidth = std::max(unit * 20, width - unit * 13 - std::max(4, unit));
    const QString sample = QStringLiteral("the quick brown fox jumps over the lazy dog, or so they say");
    m_charactersPerLine = textWidth / (text.horizontalAdvance(sample) / static_cast<double>(sample.size()));
    m_lineHeight = text.lineSpacing() * 1.2;
    m_bare = unit * 6 + list->fontMetrics().height() + unit * 4 + 8;
    m_audio = list->fontMetrics().height() * 5 / 4 + unit * 3;
    m_direction = list->fontMetrics().height() + unit * 6;
    m_notes = list->fontMetrics().height() + 8;
}

int LineRow::Estimator::height(const LineOutline &outline) const {
    const double lines = std::max(1.0, std::ceil(static_cast<double>(outline.textLength) / m_charactersPerLine));
    return m_bare + static_cast<int>(lines * m_lineHeight) + (outline.hasAudio ? m_audio : 0) +
           (outline.hasDirection ? m_direction : 0) + (outline.hasNotes ? m_notes : 0);
}

} // namespace orlenta::shell
