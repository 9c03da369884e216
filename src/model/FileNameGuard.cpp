#include "model/FileNameGuard.h"

namespace orlenta::model {

QString guardedFileName(const QString &stored) {
    qsizetype end = stored.size();
    while (end > 0 && stored.at(end - 1) == u'/')
        --end;
    const qsizetype slash = end > 0 ? stored.lastIndexOf(u'/', end - 1) : -1;
    const QString name = stored.mid(slash + 1, end - slash - 1);
    // System calls end a name at its first NUL, so they would open a different file from the one checked.
    const bool isRefused = name == QLatin1String(".") || name == QLatin1String("..") || name.contains(QChar(u'\0'));
    return isRefused ? QString() : name;
}

} // namespace orlenta::model
