#include "tags/TagInsertion.h"

#include <algorithm>

#include "tags/CharacterCount.h"

namespace orlenta::tags {
namespace {

std::optional<TagInsertion> togglingStress(const QString &text, Utf16Range range) {
    // Check the location first, so that a huge length can't overflow the sum.
    if (range.location < 0 || range.location > text.size() || range.length > text.size() - range.location)
        return std::nullopt;
    if (!isCharacterBoundary(text, range.location) || !isCharacterBoundary(text, range.end()))
        return std::nullopt;
    const QString selected = text.sliced(range.location, range.length);
    const QString upper = selected.toUpper();
    QString changed = text;
    changed.replace(range.location, range.length, selected == upper ? selected.toLower() : upper);
    return TagInsertion{changed, range};
}

std::optional<qsizetype> insertionPoint(const SelectionSources &sources) {
    if (sources.liveSelection)
        return sources.liveSelection->location;
    if (sources.textSelectionRange)
        return sources.textSelectionRange->location;
    if (sources.lastNonEmptySelection)
        return sources.lastNonEmptySelection->location;
    return std::nullopt;
}

TagInsertion insertingAt(qsizetype point, const QString &text, const QString &insertText) {
    const QString before = text.first(point);
    const QString after = text.sliced(point);
    const bool leadingBlank = !before.isEmpty() && !before.back().isSpace();
    const bool trailingBlank = !after.isEmpty() && !after.front().isSpace();
    const QString head = before + (leadingBlank ? QStringLiteral(" ") : QString()) + insertText;
    return {head + (trailingBlank ? QStringLiteral(" ") : QString()) + after, {head.size(), 0}};
}

} // namespace

Utf16Range effectiveSelectionRange(const SelectionSources &sources) {
    std::optional<Utf16Range> range = sources.liveSelection;
    if (!range)
        range = sources.textSelectionRange;
    if (!range)
        range = sources.lastNonEmptySelection;
    return range && range->length >= 1 ? *range : Utf16Range{};
}

std::optional<TagInsertion> insertTag(const TagItem &item, const QString &text, const SelectionSources &sources) {
    if (item.category == TagCategory::Stress)
        return togglingStress(text, effectiveSelectionRange(sources));
    if (const auto point = insertionPoint(sources)) {
        const qsizetype clamped = std::clamp<qsizetype>(*point, 0, text.size());
        if (isCharacterBoundary(text, clamped))
            return insertingAt(clamped, text, item.insertText);
    }
    return insertingAt(text.size(), text, item.insertText);
}

TagItem stressTagItem() {
    return {TagItemId::create(), QStringLiteral("STRESS"), QString(), TagCategory::Stress};
}

} // namespace orlenta::tags
