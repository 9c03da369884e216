#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace orlenta::speech {

/// Where a request goes and whose key pays for it. Taken once, before a request does anything else, so that neither a
/// retry nor a fall-back can reach another address or another account.
struct ServiceAccess {
    QUrl endpoint;
    /// Empty while nobody is signed in.
    QString apiKey;
    /// Raised by every change of endpoint or key. A sign-out followed by a sign-in with the same key counts as two.
    int accountEpoch = 0;

    /// The endpoint followed by `path`, which may end in a query. Invalid when the two don't form an address.
    [[nodiscard]] QUrl address(const QString &path) const;

    friend bool operator==(const ServiceAccess &, const ServiceAccess &) = default;
};

} // namespace orlenta::speech
