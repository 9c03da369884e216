#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// Writes every enabled log message, with time and category, to "orlenta.log" in the XDG state folder. Only the user
/// can read it. Warnings and errors also go to the terminal. Keeps one older file. Create one per process; it installs
/// the message handler until destroyed.
class LogFile final {
public:
    /// Rotates the file once it exceeds this many bytes.
    static constexpr qint64 largestSize = 4 * 1024 * 1024;

    /// Uses defaultPath().
    LogFile();
    explicit LogFile(const QString &path);
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    [[nodiscard]] static QString defaultPath();
};

} // namespace orlenta::base
