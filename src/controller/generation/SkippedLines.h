#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

namespace orlenta::controller {

/// Why a line ended before anything was sent for it.
enum class SkipReason {
    /// The account it was asked for was signed out, changed, or left for another endpoint.
    AccountGone,
    ProjectFolderMissing,
    ProjectFolderReadOnly,
    CacheFolderReadOnly,
    NoRoom,
};

/// The lines of a batch that were skipped, to be told in one message.
class SkippedLines final {
public:
    void add(SkipReason reason);
    [[nodiscard]] bool isEmpty() const { return m_counts.isEmpty(); }
    /// One sentence for each reason, with its number of lines. Starts the count anew.
    [[nodiscard]] QString takeMessage();

private:
    QList<std::pair<SkipReason, int>> m_counts;
};

} // namespace orlenta::controller
