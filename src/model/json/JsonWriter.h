#pragma once

#include <cstdint>
#include <string_view>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Clock.h"
#include "base/TypedId.h"

namespace orlenta::model::json {

/// Appends JSON to one growing buffer: UTF-8, two spaces of indent per level, slashes escaped. The caller gives the
/// keys in ascending order and calls key() or element() before each value. Not thread-safe.
class JsonWriter final {
public:
    explicit JsonWriter(qsizetype expectedSize);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    /// Starts a member; the name must need no escape.
    void key(std::string_view name);
    /// Starts an element of an array.
    void element();

    void text(const QString &value);
    /// A text known to need no escape.
    void plain(std::string_view value);
    void integer(std::int64_t value);
    /// The shortest text that reads back as the same number. JSON has no infinity and no NaN; those become 0, since a
    /// document that can't be read again would cost more than one number.
    void number(double value);
    void boolean(bool value);
    /// Canonical and upper-case.
    void id(const QUuid &value);
    /// ISO 8601 with whole seconds, in UTC; years outside 0 to 9999 are taken to the nearest end.
    void date(base::Timestamp value);

    /// The document; the writer is spent.
    [[nodiscard]] QByteArray take();

private:
    void reserve(qsizetype count) {
        if (m_limit - m_end < count)
            grow(count);
    }
    void grow(qsizetype count);
    void put(char character) { *m_end++ = character; }
    void append(std::string_view characters);
    void nextLine();
    void open(char bracket);
    void close(char bracket);

    QByteArray m_bytes;
    char *m_end = nullptr;
    char *m_limit = nullptr;
    qsizetype m_depth = 0;
    bool m_isFirst = true;
};

} // namespace orlenta::model::json
