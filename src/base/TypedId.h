#pragma once

#include <compare>
#include <functional>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QUuid>

namespace orlenta::base {

/// A UUID that can't be confused with the id of another kind of record. Its text is upper case without braces.
template <typename Tag>
class TypedId final {
public:
    TypedId() = default;
    explicit TypedId(const QUuid &uuid) : m_uuid(uuid) {}

    [[nodiscard]] static TypedId create() { return TypedId(QUuid::createUuid()); }

    [[nodiscard]] const QUuid &uuid() const { return m_uuid; }
    [[nodiscard]] bool isNull() const { return m_uuid.isNull(); }
    [[nodiscard]] QString text() const { return m_uuid.toString(QUuid::WithoutBraces).toUpper(); }

    friend bool operator==(const TypedId &a, const TypedId &b) { return a.m_uuid == b.m_uuid; }
    friend bool operator<(const TypedId &a, const TypedId &b) { return a.m_uuid < b.m_uuid; }
    /// Hashes all bits. QUuid's own hash ignores some, so a file could contain ten thousand ids with the same hash.
    friend size_t qHash(const TypedId &id, size_t seed = 0) { return qHashBits(&id.m_uuid, sizeof id.m_uuid, seed); }

private:
    QUuid m_uuid;
};

} // namespace orlenta::base

template <typename Tag>
struct std::hash<orlenta::base::TypedId<Tag>> {
    size_t operator()(const orlenta::base::TypedId<Tag> &id) const noexcept { return qHash(id); }
};
