#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace orlenta::speech {

/// Where a request goes and whose key pays for it. Captured once, before anything else, so that no retry or fall-back
/// can reach another address or account.
struct ServiceAccess {
    QUrl endpoint;
    /// Empty while nobody is signed in.
    QString apiKey;
    /// Incremented by every change of endpoint or key; signing out and in again with the same key is two changes.
    int accountEpoch = 0;

    /// The endpoint followed by `path`, which may end in a query. Invalid when the two don't form an address.
    [[nodiscard]] QUrl address(const QString &path) const;

    friend bool operator==(const ServiceAccess &, const ServiceAccess &) = default;
};

} // namespace orlenta::speech
