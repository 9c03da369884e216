#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

#include <QtCore/QHash>

namespace orlenta::base {

/// A map whose copies share their data: the entries are in 256 shared, sorted buckets, so keeping a copy while one
/// entry changes costs one bucket, not the map. Copying is a reference count. Keys need an order and a hash. One value
/// isn't thread-safe; copies may go to different threads.
template <typename Key, typename Value>
class SharedMap final {
public:
    [[nodiscard]] qsizetype size() const { return m_size; }
    [[nodiscard]] bool contains(const Key &key) const { return find(key) != nullptr; }
    /// The value for that key, or null. Valid until the next change.
    [[nodiscard]] const Value *find(const Key &key) const;
    [[nodiscard]] Value value(const Key &key) const;

    /// Adds the entry, or replaces the one with the same key.
    void insert(const Key &key, Value value);
    void remove(const Key &key);

    /// Calls visit(key, value) for each entry, in no particular order.
    template <typename Visit>
    void forEach(Visit visit) const;
    /// Calls visit(key, mine, theirs) for each key whose entries differ; a missing one is null. Skips shared buckets.
    template <typename Visit>
    void forEachDifference(const SharedMap &other, Visit visit) const;

    friend bool operator==(const SharedMap &a, const SharedMap &b) {
        bool isEqual = a.m_size == b.m_size;
        if (isEqual)
            a.forEachDifference(b, [&isEqual](const auto &...) { isEqual = false; });
        return isEqual;
    }

private:
    static constexpr size_t bucketCount = 256;
    using Entry = std::pair<Key, Value>;
    using Entries = std::vector<Entry>;
    using Buckets = std::array<std::shared_ptr<Entries>, bucketCount>;

    static size_t bucketOf(const Key &key) {
        // The seed is per process, so that a file can't force all its ids into one bucket.
        return static_cast<size_t>((quint64{qHash(key, QHashSeed::globalSeed())} * Q_UINT64_C(0x9E3779B97F4A7C15)) >>
                                   56);
    }
    template <typename Range>
    static auto placeIn(Range &entries, const Key &key) {
        return std::lower_bound(entries.begin(), entries.end(), key,
                                [](const Entry &entry, const Key &wanted) { return entry.first < wanted; });
    }
    Entries &detached(const Key &key);

    std::shared_ptr<Buckets> m_buckets;
    qsizetype m_size = 0;
};

template <typename Key, typename Value>
const Value *SharedMap<Key, Value>::find(const Key &key) const {
    const Entries *entries = m_buckets ? (*m_buckets)[bucketOf(key)].get() : nullptr;
    if (entries == nullptr)
        return nullptr;
    const auto found = placeIn(*entries, key);
    return found != entries->end() && found->first == key ? &found->second : nullptr;
}

template <typename Key, typename Value>
Value SharedMap<Key, Value>::value(const Key &key) const {
    const Value *found = find(key);
    return found != nullptr ? *found : Value();
}

template <typename Key, typename Value>
void SharedMap<Key, Value>::insert(const Key &key, Value value) {
    Entries &entries = detached(key);
    const auto place = placeIn(entries, key);
    if (place != entries.end() && place->first == key) {
        place->second = std::move(value);
        return;
    }
    entries.emplace(place, key, std::move(value));
    ++m_size;
}

template <typename Key, typename Value>
void SharedMap<Key, Value>::remove(const Key &key) {
    if (!contains(key))
        return;
    Entries &entries = detached(key);
    entries.erase(placeIn(entries, key));
    --m_size;
}

template <typename Key, typename Value>
template <typename Visit>
void SharedMap<Key, Value>::forEach(Visit visit) const {
    if (!m_buckets)
        return;
    for (const auto &entries : *m_buckets)
        if (entries)
            for (const auto &[key, value] : *entries)
                visit(key, value);
}

template <typename Key, typename Value>
template <typename Visit>
void SharedMap<Key, Value>::forEachDifference(const SharedMap &other, Visit visit) const {
    if (m_buckets == other.m_buckets)
        return;
    static const Buckets noBuckets;
    static const Entries none;
    const Buckets &mine = m_buckets ? *m_buckets : noBuckets;
    const Buckets &theirs = other.m_buckets ? *other.m_buckets : noBuckets;
    for (size_t i = 0; i < bucketCount; ++i) {
        if (mine[i] == theirs[i])
            continue;
        const Entries &left = mine[i] ? *mine[i] : none;
        const Entries &right = theirs[i] ? *theirs[i] : none;
        auto a = left.begin();
        auto b = right.begin();
        while (a != left.end() || b != right.end()) {
            if (b == right.end() || (a != left.end() && a->first < b->first)) {
                visit(a->first, &a->second, static_cast<const Value *>(nullptr));
                ++a;
            } else if (a == left.end() || b->first < a->first) {
                visit(b->first, static_cast<const Value *>(nullptr), &b->second);
                ++b;
            } else {
                if (!(a->second == b->second))
                    visit(a->first, &a->second, &b->second);
                ++a;
                ++b;
            }
        }
    }
}

template <typename Key, typename Value>
typename SharedMap<Key, Value>::Entries &SharedMap<Key, Value>::detached(const Key &key) {
    if (!m_buckets)
        m_buckets = std::make_shared<Buckets>();
    else if (m_buckets.use_count() > 1)
        m_buckets = std::make_shared<Buckets>(*m_buckets);
    std::shared_ptr<Entries> &entries = (*m_buckets)[bucketOf(key)];
    if (!entries)
        entries = std::make_shared<Entries>();
    else if (entries.use_count() > 1)
        entries = std::make_shared<Entries>(*entries);
    return *entries;
}

} // namespace orlenta::base
