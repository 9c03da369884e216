#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

namespace orlenta::controller {

/// Why a line was skipped before any request.
enum class SkipReason {
    /// The account it was requested with was signed out or changed, or the endpoint changed.
    AccountGone,
    ProjectFolderMissing,
    ProjectFolderReadOnly,
    CacheFolderReadOnly,
    NoRoom,
    TextTooLong,
};

/// Counts the skipped lines of a batch, for a single message.
class SkippedLines final {
public:
    void add(SkipReason reason);
    [[nodiscard]] bool isEmpty() const { return m_counts.isEmpty(); }
    /// One sentence per reason, with the number of lines. Resets the counts.
    [[nodiscard]] QString takeMessage();

private:
    QList<std::pair<SkipReason, int>> m_counts;
};

} // namespace orlenta::controller
