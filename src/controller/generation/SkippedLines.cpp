#include "controller/generation/SkippedLines.h"

#include <algorithm>
#include <utility>

#include <QtCore/QStringList>

#include "base/files/PrivateFolders.h"

namespace orlenta::controller {
namespace {

QString wordsFor(SkipReason reason) {
    switch (reason) {
    case SkipReason::AccountGone:
        return QStringLiteral("you signed out or switched accounts first");
    case SkipReason::ProjectFolderMissing:
        return QStringLiteral("the project's folder can't be found");
    case SkipReason::ProjectFolderReadOnly:
        return QStringLiteral("the project's folder isn't writable");
    case SkipReason::CacheFolderReadOnly:
        return QStringLiteral("the folder %1 isn't writable").arg(base::PrivateFolders::caches());
    case SkipReason::NoRoom:
        return QStringLiteral("there isn't enough disk space");
    case SkipReason::TextTooLong:
        return QStringLiteral("the text is longer than its model takes; shorten or split it");
    }
    Q_UNREACHABLE();
}

} // namespace

void SkippedLines::add(SkipReason reason) {
    const auto known =
        std::find_if(m_counts.begin(), m_counts.end(),
                     [reason](const std::pair<SkipReason, int> &count) { return count.first == reason; });
    if (known == m_counts.end())
        m_counts.append({reason, 1});
    else
        ++known->second;
}

QString SkippedLines::takeMessage() {
    QStringList sentences;
    for (const auto &[reason, count] : std::exchange(m_counts, {}))
        sentences.append(count == 1
                             ? QStringLiteral("1 line wasn't generated: %1.").arg(wordsFor(reason))
                             : QStringLiteral("%1 lines weren't generated: %2.").arg(count).arg(wordsFor(reason)));
    return sentences.join(u' ');
}

} // namespace orlenta::controller
