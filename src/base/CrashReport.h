#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

namespace orlenta::base {

/// Writes the last breadcrumbs and the stack to a text file when the process crashes. Nothing is ever sent anywhere.
/// Breadcrumbs contain no keys and no script text.
class CrashReport final {
public:
    enum class Level { Info, Warning, Error };

    CrashReport() = delete;

    /// Installs the handler for fatal signals. It overwrites "crash-report.txt" in `folder`, then lets the signal end
    /// the process as usual. Call once, on the main thread.
    static void install(const QString &folder);
    /// Records what the program is doing. Keeps the last 32 entries, each truncated to 500 bytes. Any thread.
    static void addBreadcrumb(const QString &category, Level level, const QString &message, const QVariantMap &data);
};

} // namespace orlenta::base
