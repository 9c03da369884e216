#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/PronunciationEntry.h"

namespace orlenta::pronunciation {

/// The enabled entries with a spelling and an override as a W3C Pronunciation Lexicon document, version 1.0
/// (https://www.w3.org/TR/pronunciation-lexicon/): simple entries as aliases, advanced ones as phonemes. `language` is
/// a language tag such as "en-US". Lines end in LF, without one at the end of the document. Pure.
[[nodiscard]] QString pronunciationLexicon(const QList<model::PronunciationEntry> &entries, const QString &language);

} // namespace orlenta::pronunciation
