#include "pronunciation/LocalPronunciation.h"

#include <iterator>
#include <map>
#include <optional>

#include <QtCore/QStringMatcher>

#include "pronunciation/CapitalVariant.h"
#include "tags/TagParser.h"

namespace orlenta::pronunciation {
namespace {

struct Rule {
    QString word;
    QString replacement;
};

/// The ranges already taken, by location. They don't overlap, so comparing with the neighbours shows whether a place is
/// free.
struct TakenStretch {
    qsizetype end = 0;
    /// Null for a tag, which isn't replaced.
    const QString *replacement = nullptr;
};
using TakenStretches = std::map<qsizetype, TakenStretch>;

QList<Rule> localRules(const QList<model::PronunciationEntry> &entries) {
    QList<Rule> rules;
    for (const model::PronunciationEntry &entry : entries) {
        const std::optional<QString> alias = entry.alias();
        if (entry.isEnabled && alias && !entry.spelling.isEmpty())
            rules.append({entry.spelling, *alias});
    }
    const qsizetype entered = rules.size();
    for (qsizetype i = 0; i < entered; ++i) {
        if (const std::optional<QString> capital = capitalVariant(rules.at(i).word))
            rules.append({*capital, rules.at(i).replacement});
    }
    return rules;
}

bool isWordCharacter(char32_t codePoint) {
    return QChar::isLetter(codePoint) || QChar::isNumber(codePoint) || codePoint == U'_';
}

bool touchesWordBefore(QStringView text, qsizetype position) {
    if (position == 0)
        return false;
    const QChar last = text.at(position - 1);
    if (last.isLowSurrogate() && position >= 2 && text.at(position - 2).isHighSurrogate())
        return isWordCharacter(QChar::surrogateToUcs4(text.at(position - 2), last));
    return isWordCharacter(last.unicode());
}

bool touchesWordAfter(QStringView text, qsizetype position) {
    if (position == text.size())
        return false;
    const QChar first = text.at(position);
    if (first.isHighSurrogate() && position + 1 < text.size() && text.at(position + 1).isLowSurrogate())
        return isWordCharacter(QChar::surrogateToUcs4(first, text.at(position + 1)));
    return isWordCharacter(first.unicode());
}

bool isFree(const TakenStretches &taken, qsizetype location, qsizetype end) {
    const auto next = taken.lower_bound(location);
    if (next != taken.end() && next->first < end)
        return false;
    return next == taken.begin() || std::prev(next)->second.end <= location;
}

/// Takes the free matches of one rule. Searches for the plain word: a regular expression would reject the whole text
/// for one broken surrogate.
bool takeMatches(TakenStretches &taken, QStringView text, const Rule &rule) {
    const QStringMatcher matcher(rule.word, Qt::CaseSensitive);
    bool hasTaken = false;
    qsizetype location = matcher.indexIn(text);
    while (location >= 0) {
        const qsizetype end = location + rule.word.size();
        const bool isWord = !touchesWordBefore(text, location) && !touchesWordAfter(text, end);
        if (isWord && isFree(taken, location, end)) {
            taken.emplace(location, TakenStretch{end, &rule.replacement});
            hasTaken = true;
        }
        location = matcher.indexIn(text, isWord ? end : location + 1);
    }
    return hasTaken;
}

} // namespace

QString applyingLocalPronunciation(const QString &text, const QList<model::PronunciationEntry> &entries) {
    const QList<Rule> rules = localRules(entries);
    if (rules.isEmpty())
        return text;
    TakenStretches taken;
    for (const tags::ParsedTag &tag : tags::parseTags(text))
        taken.emplace(tag.fullRange.location, TakenStretch{tag.fullRange.end(), nullptr});
    bool hasTaken = false;
    for (const Rule &rule : rules)
        hasTaken = takeMatches(taken, text, rule) || hasTaken;
    if (!hasTaken)
        return text;

    QString replaced;
    qsizetype copied = 0;
    for (const auto &[location, stretch] : taken) {
        if (stretch.replacement == nullptr)
            continue;
        replaced += QStringView(text).sliced(copied, location - copied);
        replaced += *stretch.replacement;
        copied = stretch.end;
    }
    replaced += QStringView(text).sliced(copied);
    return replaced;
}

} // namespace orlenta::pronunciation
