#pragma once

#include <cstdint>
#include <string_view>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Clock.h"
#include "base/TypedId.h"

namespace orlenta::model::json {

/// Appends JSON to a growing buffer: UTF-8, two spaces of indent per level, slashes escaped. The caller writes the keys
/// in ascending order and calls key() or element() before each value. Not thread-safe.
class JsonWriter final {
public:
    explicit JsonWriter(qsizetype expectedSize);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    /// Starts a member. The name must not need escapes.
    void key(std::string_view name);
    /// Starts an array element.
    void element();

    void text(const QString &value);
    /// Text that is known to need no escapes.
    void plain(std::string_view value);
    void integer(std::int64_t value);
    /// The shortest text that reads back as the same number. JSON has no infinity or NaN; they become 0, since losing
    /// one number is better than writing an unreadable document.
    void number(double value);
    void boolean(bool value);
    /// Canonical form, upper case.
    void id(const QUuid &value);
    /// ISO 8601 in UTC with whole seconds. Years outside 0 to 9999 are clamped.
    void date(base::Timestamp value);

    /// Returns the document. Don't use the writer afterwards.
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
