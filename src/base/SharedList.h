#pragma once

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <vector>

#include <QtCore/QList>

namespace orlenta::base {

/// A list whose copies share their data: the elements are in shared chunks, so keeping a copy while elements are
/// inserted, removed or moved costs a chunk, not the list (about 5 KB of ids for one insertion among 10,000). Copying
/// is a reference count. Access by index is a binary search of the chunks. One value isn't thread-safe; copies may go
/// to different threads.
///
/// Long because it is a template.
template <typename T>
class SharedList final {
public:
    class const_iterator;
    using value_type = T;

    SharedList() = default;
    SharedList(std::initializer_list<T> items) {
        for (const T &item : items)
            append(item);
    }
    SharedList(const QList<T> &items) {
        for (const T &item : items)
            append(item);
    }

    [[nodiscard]] qsizetype size() const { return m_chunks && !m_chunks->empty() ? m_chunks->back().end : 0; }
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    [[nodiscard]] const T &at(qsizetype index) const;
    [[nodiscard]] const T &first() const { return at(0); }
    [[nodiscard]] const T &last() const { return at(size() - 1); }
    /// Index of the first equal element, or -1. Linear.
    [[nodiscard]] qsizetype indexOf(const T &item) const;
    [[nodiscard]] bool contains(const T &item) const { return indexOf(item) >= 0; }
    /// Up to `length` elements starting at `index`.
    [[nodiscard]] QList<T> mid(qsizetype index, qsizetype length) const;
    [[nodiscard]] QList<T> toList() const { return mid(0, size()); }

    [[nodiscard]] const_iterator begin() const { return const_iterator(m_chunks.get(), 0); }
    [[nodiscard]] const_iterator end() const { return const_iterator(m_chunks.get(), m_chunks ? m_chunks->size() : 0); }

    void append(T item) { insert(size(), std::move(item)); }
    /// Inserts the element before the one at `index`.
    void insert(qsizetype index, T item);
    void removeAt(qsizetype index);
    /// Moves an element. `to` is the index in the list without it.
    void move(qsizetype from, qsizetype to);
    /// Calls the predicate once per element, in order.
    template <typename Predicate>
    void removeIf(Predicate predicate);

    friend bool operator==(const SharedList &a, const SharedList &b) {
        return a.m_chunks == b.m_chunks || (a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin()));
    }

private:
    static constexpr size_t largestChunk = 256;
    static constexpr size_t smallestChunk = 64;

    using Items = std::vector<T>;
    struct Chunk {
        std::shared_ptr<Items> items;
        /// List index after the chunk's last element.
        qsizetype end = 0;
    };
    using Chunks = std::vector<Chunk>;

    [[nodiscard]] size_t chunkOf(qsizetype index) const;
    [[nodiscard]] qsizetype startOf(size_t chunk) const { return chunk == 0 ? 0 : (*m_chunks)[chunk - 1].end; }
    Chunks &detachedChunks();
    Items &detachedItems(size_t chunk);
    void split(size_t chunk);
    void joinWithNext(size_t chunk);
    void recount(size_t from);

    std::shared_ptr<Chunks> m_chunks;
};

template <typename T>
class SharedList<T>::const_iterator final {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = qsizetype;
    using pointer = const T *;
    using reference = const T &;

    const_iterator() = default;
    const_iterator(const Chunks *chunks, size_t chunk) : m_chunks(chunks), m_chunk(chunk) {}

    const T &operator*() const { return (*(*m_chunks)[m_chunk].items)[m_item]; }
    const T *operator->() const { return &**this; }
    const_iterator &operator++() {
        if (++m_item == (*m_chunks)[m_chunk].items->size()) {
            m_item = 0;
            ++m_chunk;
        }
        return *this;
    }
    const_iterator operator++(int) {
        const const_iterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const const_iterator &, const const_iterator &) = default;

private:
    const Chunks *m_chunks = nullptr;
    size_t m_chunk = 0;
    size_t m_item = 0;
};

template <typename T>
size_t SharedList<T>::chunkOf(qsizetype index) const {
    const auto found = std::upper_bound(m_chunks->begin(), m_chunks->end(), index,
                                        [](qsizetype wanted, const Chunk &chunk) { return wanted < chunk.end; });
    return static_cast<size_t>(found - m_chunks->begin());
}

template <typename T>
const T &SharedList<T>::at(qsizetype index) const {
    Q_ASSERT(index >= 0 && index < size());
    const size_t chunk = chunkOf(index);
    return (*(*m_chunks)[chunk].items)[static_cast<size_t>(index - startOf(chunk))];
}

template <typename T>
qsizetype SharedList<T>::indexOf(const T &item) const {
    qsizetype start = 0;
    for (const Chunk &chunk : m_chunks ? *m_chunks : Chunks()) {
        const auto found = std::find(chunk.items->begin(), chunk.items->end(), item);
        if (found != chunk.items->end())
            return start + (found - chunk.items->begin());
        start = chunk.end;
    }
    return -1;
}

template <typename T>
QList<T> SharedList<T>::mid(qsizetype index, qsizetype length) const {
    const qsizetype last = std::min(index + length, size());
    QList<T> found;
    found.reserve(std::max<qsizetype>(last - index, 0));
    for (size_t chunk = index < last ? chunkOf(index) : 0; index < last; ++chunk) {
        const Items &items = *(*m_chunks)[chunk].items;
        const qsizetype start = startOf(chunk);
        for (; index < std::min(last, (*m_chunks)[chunk].end); ++index)
            found.append(items[static_cast<size_t>(index - start)]);
    }
    return found;
}

template <typename T>
void SharedList<T>::insert(qsizetype index, T item) {
    Q_ASSERT(index >= 0 && index <= size());
    Chunks &chunks = detachedChunks();
    if (chunks.empty())
        chunks.push_back({std::make_shared<Items>(), 0});
    // Appending goes to the last chunk.
    size_t chunk = std::min(chunkOf(index), chunks.size() - 1);
    if (chunks[chunk].items->size() == largestChunk) {
        if (index == size()) {
            chunks.push_back({std::make_shared<Items>(), size()});
            ++chunk;
        } else {
            split(chunk);
            chunk = chunkOf(index);
        }
    }
    Items &items = detachedItems(chunk);
    items.insert(items.begin() + (index - startOf(chunk)), std::move(item));
    for (; chunk < chunks.size(); ++chunk)
        ++chunks[chunk].end;
}

template <typename T>
void SharedList<T>::removeAt(qsizetype index) {
    Q_ASSERT(index >= 0 && index < size());
    Chunks &chunks = detachedChunks();
    const size_t chunk = chunkOf(index);
    Items &items = detachedItems(chunk);
    items.erase(items.begin() + (index - startOf(chunk)));
    for (size_t behind = chunk; behind < chunks.size(); ++behind)
        --chunks[behind].end;
    if (items.empty())
        chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(chunk));
    else if (items.size() < smallestChunk && chunk + 1 < chunks.size())
        joinWithNext(chunk);
}

template <typename T>
void SharedList<T>::move(qsizetype from, qsizetype to) {
    T item = at(from);
    removeAt(from);
    insert(to, std::move(item));
}

template <typename T>
template <typename Predicate>
void SharedList<T>::removeIf(Predicate predicate) {
    for (size_t chunk = 0; chunk < (m_chunks ? m_chunks->size() : 0);) {
        const Items &before = *(*m_chunks)[chunk].items;
        Items kept;
        std::copy_if(before.begin(), before.end(), std::back_inserter(kept),
                     [&predicate](const T &item) { return !predicate(item); });
        if (kept.size() == before.size()) {
            ++chunk;
        } else if (kept.empty()) {
            Chunks &chunks = detachedChunks();
            chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(chunk));
        } else {
            detachedChunks()[chunk++].items = std::make_shared<Items>(std::move(kept));
        }
    }
    if (m_chunks)
        recount(0);
}

template <typename T>
typename SharedList<T>::Chunks &SharedList<T>::detachedChunks() {
    if (!m_chunks)
        m_chunks = std::make_shared<Chunks>();
    else if (m_chunks.use_count() > 1)
        m_chunks = std::make_shared<Chunks>(*m_chunks);
    return *m_chunks;
}

template <typename T>
typename SharedList<T>::Items &SharedList<T>::detachedItems(size_t chunk) {
    std::shared_ptr<Items> &items = (*m_chunks)[chunk].items;
    if (items.use_count() > 1)
        items = std::make_shared<Items>(*items);
    return *items;
}

template <typename T>
void SharedList<T>::split(size_t chunk) {
    const Items &items = *(*m_chunks)[chunk].items;
    const auto middle = items.begin() + largestChunk / 2;
    auto first = std::make_shared<Items>(items.begin(), middle);
    auto second = std::make_shared<Items>(middle, items.end());
    (*m_chunks)[chunk].items = std::move(first);
    m_chunks->insert(m_chunks->begin() + static_cast<std::ptrdiff_t>(chunk) + 1, Chunk{std::move(second), 0});
    recount(chunk);
}

// Keeps scattered removals from leaving more and more small chunks.
template <typename T>
void SharedList<T>::joinWithNext(size_t chunk) {
    const Items &next = *(*m_chunks)[chunk + 1].items;
    Items &items = *(*m_chunks)[chunk].items;
    if (items.size() + next.size() > largestChunk)
        return;
    items.insert(items.end(), next.begin(), next.end());
    m_chunks->erase(m_chunks->begin() + static_cast<std::ptrdiff_t>(chunk) + 1);
    recount(chunk);
}

template <typename T>
void SharedList<T>::recount(size_t from) {
    qsizetype end = startOf(from);
    for (size_t chunk = from; chunk < m_chunks->size(); ++chunk) {
        end += static_cast<qsizetype>((*m_chunks)[chunk].items->size());
        (*m_chunks)[chunk].end = end;
    }
}

} // namespace orlenta::base
