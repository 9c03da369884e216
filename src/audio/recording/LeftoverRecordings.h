#pragma once

#include <chrono>

#include <QtCore/QStringList>

namespace orlenta::audio {

/// Recordings in the caches folder that aren't attached to any line, because of a crash or because they couldn't be
/// stored in their project. They can't be recreated, so none that contains audio is ever removed here.
class LeftoverRecordings final {
public:
    LeftoverRecordings() = delete;

    /// Time a finished recording gets to reach its line before it counts as left over.
    static constexpr std::chrono::seconds settlingTime{10};

    /// Returns the paths of leftover recordings in the folder, sorted by name, and removes empty ones. Ignores
    /// recordings in progress, in any process. Blocking; any thread.
    [[nodiscard]] static QStringList find(const QString &folder, std::chrono::system_clock::time_point now);
};

} // namespace orlenta::audio
