#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// The program's log on disk: every message of every category that is switched on, with time and category, in
/// "orlenta.log" below the XDG state folder, readable by the user alone. Warnings and worse go to the terminal as well.
/// One older file of the same size is kept. There is one for the process, from when it is made until it is destroyed.
class LogFile final {
public:
    /// The bytes after which the file is set aside and a new one begun.
    static constexpr qint64 largestSize = 4 * 1024 * 1024;

    /// In the user's own place.
    LogFile();
    explicit LogFile(const QString &path);
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    [[nodiscard]] static QString defaultPath();
};

} // namespace orlenta::base
