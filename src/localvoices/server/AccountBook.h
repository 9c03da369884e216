#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace orlenta::localvoices {

/// The account that the service reports: owner, plan, and credits used since startup.
class AccountBook final {
public:
    /// `characterLimit` is the total number of credits.
    explicit AccountBook(qint64 characterLimit);

    [[nodiscard]] qint64 limit() const { return m_limit; }
    [[nodiscard]] qint64 used() const { return m_used; }
    [[nodiscard]] qint64 remaining() const { return m_limit - m_used; }
    void charge(qint64 credits) { m_used += credits; }

    /// The answer to GET /v1/user.
    [[nodiscard]] QJsonObject userJson() const;

private:
    [[nodiscard]] QJsonObject subscriptionJson() const;

    qint64 m_limit;
    qint64 m_used = 0;
    qint64 m_since;
};

} // namespace orlenta::localvoices
