#include "speech/http/ServiceAccess.h"

namespace orlenta::speech {

QUrl ServiceAccess::address(const QString &path) const {
    return QUrl(endpoint.toString(QUrl::StripTrailingSlash) + path, QUrl::StrictMode);
}

} // namespace orlenta::speech
