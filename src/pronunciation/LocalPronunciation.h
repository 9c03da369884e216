#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/PronunciationEntry.h"

namespace orlenta::pronunciation {

/// The text with the words of the enabled simple entries replaced by their aliases, for a model that takes no
/// pronunciation dictionary. Whole words only, case-sensitive, except that a word entered in lower case is also found
/// with a capital. An earlier entry wins an overlap, and nothing inside a tag is replaced. Safe from any thread.
[[nodiscard]] QString applyingLocalPronunciation(const QString &text, const QList<model::PronunciationEntry> &entries);

} // namespace orlenta::pronunciation
