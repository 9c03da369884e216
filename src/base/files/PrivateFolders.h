#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// The application's own folders, created on demand. Any thread.
class PrivateFolders final {
public:
    PrivateFolders() = delete;

    /// The user's temporary folder for this application, shared by all of the user's processes. It has mode 0700 and
    /// belongs to the user. If somebody else owns the usual name, a new random name is used; if the system has no
    /// usable temporary folder, one in caches().
    [[nodiscard]] static QString temporary();
    /// The application's XDG cache folder: generated audio on its way into a project.
    [[nodiscard]] static QString caches();
    /// The application's XDG data folder: persistent data that belongs to no project.
    [[nodiscard]] static QString applicationSupport();
};

} // namespace orlenta::base
