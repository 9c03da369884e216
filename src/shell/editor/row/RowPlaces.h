#pragma once

#include <QtCore/QRect>

namespace orlenta::shell {

class DirectionStrip;
class LineHeader;
class NotesField;
class ScriptTextField;
class TakeStrip;

/// The parts of a row that take room; null for those that are hidden or don't exist.
struct RowParts {
    const LineHeader *header = nullptr;
    ScriptTextField *text = nullptr;
    NotesField *notes = nullptr;
    const DirectionStrip *direction = nullptr;
    const TakeStrip *takes = nullptr;
};

/// Where the parts of a row stand at a given width. All measures are in pixels and derive from `unit`.
struct RowPlaces {
    QRect card;
    QRect stripe;
    QRect header;
    QRect status;
    QRect text;
    QRect notes;
    QRect direction;
    QRect takes;
    int height = 0;

    /// A card: header, text, notes, direction and takes below each other. In a wide list, the takes stand beside the
    /// text.
    [[nodiscard]] static RowPlaces comfortable(const RowParts &parts, int width, int unit);
    /// One line of columns: number and name, text, takes, status. In a narrow list, the takes have no room.
    [[nodiscard]] static RowPlaces compact(int width, int unit);

    /// The height of a compact row, in units.
    static constexpr int compactHeight = 7;
    /// Text is no wider than this many units, about 84 characters.
    static constexpr int longestText = 168;
    /// Lists from this many units on have the takes beside the text.
    static constexpr int wideList = 260;
};

} // namespace orlenta::shell
