#pragma once

#include <chrono>

#include <QtCore/QStringList>

namespace orlenta::audio {

/// Recordings in the caches folder that no line has: a crash ended them or kept them from their line, or they could not
/// be stored in their project. Nobody can make them again, so none that holds sound is ever removed here.
class LeftoverRecordings final {
public:
    LeftoverRecordings() = delete;

    /// How long a finished recording may take to its line before it counts as left over.
    static constexpr std::chrono::seconds settlingTime{10};

    /// The paths of those in the folder, by name; also removes those that never got any sound. One that is being
    /// recorded at `now`, by whichever process, is left alone. Blocking; any thread.
    [[nodiscard]] static QStringList find(const QString &folder, std::chrono::system_clock::time_point now);
};

} // namespace orlenta::audio
