#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/PronunciationEntry.h"

namespace orlenta::pronunciation {

/// Replaces the words of enabled simple entries with their aliases, for models without pronunciation dictionaries.
/// Matches whole words, case-sensitively, except that a lower-case word also matches with a capital. The earlier entry
/// wins an overlap; tags are never changed. Any thread.
[[nodiscard]] QString applyingLocalPronunciation(const QString &text, const QList<model::PronunciationEntry> &entries);

} // namespace orlenta::pronunciation
