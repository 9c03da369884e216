#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

namespace orlenta::base {

/// What a crash leaves behind for whoever looks into it: the last breadcrumbs and the stack, as text in one file of the
/// user's own. Nothing is ever sent anywhere. A breadcrumb holds no key and no text of a script.
class CrashReport final {
public:
    enum class Level { Info, Warning, Error };

    CrashReport() = delete;

    /// From now on a fatal signal writes the report to "crash-report.txt" in `folder`, over the last one, and then ends
    /// the process as it would have ended anyway. Once, on the main thread.
    static void install(const QString &folder);
    /// Notes what happened on the way; the last 32 are kept, each cut to 500 bytes. Any thread.
    static void addBreadcrumb(const QString &category, Level level, const QString &message, const QVariantMap &data);
};

} // namespace orlenta::base
