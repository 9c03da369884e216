#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// Where the application keeps files of its own. Each folder is made when asked for. Any thread.
class PrivateFolders final {
public:
    PrivateFolders() = delete;

    /// The user's temporary folder for this application: mode 0700 and owned by the user, or a fresh random one when
    /// somebody else already holds the name, or one below caches() where no shared temporary folder can be used. Shared
    /// by all processes of the user.
    [[nodiscard]] static QString temporary();
    /// Generated audio on its way into a project: the XDG cache folder's part of this application.
    [[nodiscard]] static QString caches();
    /// Data that outlives a run and belongs to no project: the XDG data folder's part of this application.
    [[nodiscard]] static QString applicationSupport();
};

} // namespace orlenta::base
