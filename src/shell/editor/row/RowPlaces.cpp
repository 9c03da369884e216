#include "shell/editor/row/RowPlaces.h"

#include <algorithm>

#include <QtGui/QTextDocument>

#include "shell/editor/row/DirectionStrip.h"
#include "shell/editor/row/LineHeader.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/row/ScriptTextField.h"
#include "shell/editor/row/TakeStrip.h"

namespace orlenta::shell {
namespace {

// All in units.
constexpr int sideMargin = 3;
constexpr int statusWidth = 6;
constexpr int longestCard = 400;
/// A lane of more bars than a waveform has peaks would draw each peak twice.
constexpr int longestTakes = 214;
/// The smallest lists whose compact rows show a lane, and the whole name.
constexpr int listWithLane = 130;
constexpr int listWithName = 100;

int stripeWidth(int unit) {
    return std::max(4, unit);
}

} // namespace

RowPlaces RowPlaces::comfortable(const RowParts &parts, int width, int unit) {
    RowPlaces places;
    const int half = (unit + 1) / 2;
    const int cardWidth = std::clamp(width - 2 * sideMargin * unit, unit * 20, unit * longestCard);
    places.card = QRect(sideMargin * unit, half, cardWidth, 0);
    const int stripe = stripeWidth(unit);
    const bool isWide = width >= wideList * unit;
    const int padding = isWide ? unit : unit + half;
    const QRect inner = places.card.adjusted(stripe + unit * 3, padding, -unit * 2, 0);

    const QRect head = inner.adjusted(0, 0, -(statusWidth + 1) * unit, 0);
    places.header = QRect(head.topLeft(), QSize(head.width(), parts.header->heightForWidth(head.width())));
    places.status = QRect(inner.right() + 1 - statusWidth * unit, inner.top(), statusWidth * unit, statusWidth * unit);

    // The fields have a margin of their own: align their text with the header, and let the margins overlap.
    const int outset = static_cast<int>(parts.text->document()->documentMargin());
    const int textWidth = std::min(inner.width(), longestText * unit) + 2 * outset;
    const QRect textColumn(inner.left() - outset, 0, textWidth, 0);
    int y = places.header.bottom() + 1 + (isWide ? 0 : half);
    const auto field = [&](int height) {
        const QRect place(textColumn.left(), y - outset, textColumn.width(), height);
        y = place.bottom() + 1 - outset;
        return place;
    };
    places.text = field(parts.text->heightForTextWidth(textColumn.width()));
    if (parts.notes != nullptr)
        places.notes = field(parts.notes->heightForTextWidth(textColumn.width()));
    const auto below = [&](int left, int columnWidth, int height) {
        const QRect place(left, y + half, columnWidth, height);
        y = place.bottom() + 1;
        return place;
    };
    if (parts.direction != nullptr) {
        const int columnWidth = textColumn.width() - 2 * outset;
        places.direction = below(inner.left(), columnWidth, parts.direction->heightForWidth(columnWidth));
    }
    if (parts.takes != nullptr) {
        const int tall = parts.takes->sizeHint().height();
        // The play button has padding around its icon. Align the icon with the header, too.
        if (isWide) {
            const int left = textColumn.right() + unit * 3;
            const int top = places.text.top() + outset + (places.text.height() - 2 * outset - tall) / 2;
            const int room = std::min(inner.right() + 1 - left, longestTakes * unit);
            places.takes = QRect(left, std::max(top, places.header.bottom() + 1 - half), room, tall);
            y = std::max(y, places.takes.bottom() + 1);
        } else {
            places.takes = below(inner.left() - unit, inner.width() + unit, tall);
        }
    }
    places.card.setHeight(y + padding - places.card.top());
    places.stripe = QRect(places.card.left(), places.card.top(), stripe, places.card.height());
    places.height = places.card.bottom() + 1 + half;
    return places;
}

RowPlaces RowPlaces::compact(int width, int unit) {
    RowPlaces places;
    const int tall = compactHeight * unit;
    const int cardWidth = std::clamp(width - 2 * sideMargin * unit, unit * 20, unit * longestCard);
    places.card = QRect(sideMargin * unit, 0, cardWidth, tall);
    places.stripe = QRect(places.card.left(), 0, stripeWidth(unit), tall);
    places.height = tall;
    int left = places.stripe.right() + 1 + unit * 2;
    int right = places.card.right() + 1 - unit;
    const auto fromRight = [&](int units) {
        right -= units * unit;
        return QRect(right, 0, units * unit, tall);
    };
    places.status = fromRight(statusWidth);
    if (width >= listWithLane * unit)
        places.takes = fromRight(6 + 30 + 12 + 8);
    // The number takes six units of the header, the name the rest.
    places.header = QRect(left, 0, (width >= listWithName * unit ? 6 + 24 : 6 + 6) * unit, tall);
    left = places.header.right() + 1 + unit;
    places.text = QRect(left, 0, std::max(0, right - left - unit * 2), tall);
    return places;
}

} // namespace orlenta::shell
