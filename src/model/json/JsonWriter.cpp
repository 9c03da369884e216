#include "model/json/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstring>
#include <utility>

namespace orlenta::model::json {
namespace {

constexpr std::string_view upperHex = "0123456789ABCDEF";
constexpr qsizetype indentWidth = 2;
constexpr qsizetype usualIndent = 16;

// For each ASCII character, the letter after the backslash, 'u' for the long form, or 0 if it needs no escape.
constexpr std::array<char, 128> makeEscapes() {
    std::array<char, 128> escapes{};
    for (size_t control = 0; control < 0x20; ++control)
        escapes[control] = 'u';
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['/'] = '/';
    return escapes;
}
constexpr std::array<char, 128> escapes = makeEscapes();

char *putHex(char *out, unsigned value, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        *out++ = upperHex[(value >> shift) & 0xF];
    return out;
}

char *putDecimal(char *out, unsigned value, int digits) {
    for (int i = digits - 1; i >= 0; --i, value /= 10)
        out[i] = static_cast<char>('0' + value % 10);
    return out + digits;
}

char *putEscaped(char *out, unsigned character) {
    const char escape = escapes[character];
    *out++ = '\\';
    *out++ = escape;
    return escape == 'u' ? putHex(out, character, 4) : out;
}

char *putHundredths(char *out, unsigned hundredths) {
    out = std::to_chars(out, out + 8, hundredths / 100).ptr;
    const unsigned fraction = hundredths % 100;
    if (fraction == 0)
        return out;
    *out++ = '.';
    *out++ = static_cast<char>('0' + fraction / 10);
    if (fraction % 10 != 0)
        *out++ = static_cast<char>('0' + fraction % 10);
    return out;
}

char *putCodePoint(char *out, char32_t point) {
    const auto continuation = [&](int shift) { *out++ = static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x800) {
        *out++ = static_cast<char>(0xC0 | (point >> 6));
    } else if (point < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (point >> 12));
        continuation(6);
    } else {
        *out++ = static_cast<char>(0xF0 | (point >> 18));
        continuation(12);
        continuation(6);
    }
    continuation(0);
    return out;
}

} // namespace

JsonWriter::JsonWriter(qsizetype expectedSize) : m_bytes(std::max<qsizetype>(expectedSize, 256), Qt::Uninitialized) {
    m_end = m_bytes.data();
    m_limit = m_end + m_bytes.size();
}

void JsonWriter::beginObject() {
    open('{');
}

void JsonWriter::endObject() {
    close('}');
}

void JsonWriter::beginArray() {
    open('[');
}

void JsonWriter::endArray() {
    close(']');
}

void JsonWriter::key(std::string_view name) {
    reserve(static_cast<qsizetype>(name.size()) + 6 + usualIndent + m_depth * indentWidth);
    if (!m_isFirst)
        put(',');
    m_isFirst = false;
    nextLine();
    put('"');
    append(name);
    append("\": ");
}

void JsonWriter::element() {
    reserve(2 + usualIndent + m_depth * indentWidth);
    if (!m_isFirst)
        put(',');
    m_isFirst = false;
    nextLine();
}

void JsonWriter::text(const QString &value) {
    reserve(2 + value.size() * 6);
    char *out = m_end;
    *out++ = '"';
    const char16_t *in = QStringView(value).utf16();
    const char16_t *const end = in + value.size();
    while (in != end) {
        char16_t unit = *in++;
        // Most text needs no escapes, so it gets a loop of its own.
        while (unit < 0x80 && escapes[unit] == 0) {
            *out++ = static_cast<char>(unit);
            if (in == end) {
                *out++ = '"';
                m_end = out;
                return;
            }
            unit = *in++;
        }
        if (unit < 0x80)
            out = putEscaped(out, unit);
        else if (QChar::isHighSurrogate(unit) && in != end && QChar::isLowSurrogate(*in))
            out = putCodePoint(out, QChar::surrogateToUcs4(unit, *in++));
        else
            out = putCodePoint(out, QChar::isSurrogate(unit) ? char32_t{QChar::ReplacementCharacter} : unit);
    }
    *out++ = '"';
    m_end = out;
}

void JsonWriter::plain(std::string_view value) {
    reserve(static_cast<qsizetype>(value.size()) + 2);
    put('"');
    append(value);
    put('"');
}

void JsonWriter::integer(std::int64_t value) {
    constexpr qsizetype longest = 24;
    reserve(longest);
    m_end = std::to_chars(m_end, m_end + longest, value).ptr;
}

void JsonWriter::number(double value) {
    constexpr qsizetype longest = 32;
    reserve(longest);
    // Settings are usually hundredths. If dividing gives back the same number, the two digits are the shortest text,
    // and much faster to find.
    if (const double hundredths = value * 100; hundredths >= 0 && hundredths < 100'000) {
        const auto rounded = static_cast<unsigned>(std::lround(hundredths));
        if (rounded / 100.0 == value && !std::signbit(value)) {
            m_end = putHundredths(m_end, rounded);
            return;
        }
    }
    m_end = std::to_chars(m_end, m_end + longest, std::isfinite(value) ? value : 0.0).ptr;
}

void JsonWriter::boolean(bool value) {
    reserve(5);
    append(value ? "true" : "false");
}

void JsonWriter::id(const QUuid &value) {
    reserve(38);
    put('"');
    m_end = putHex(m_end, value.data1, 8);
    put('-');
    m_end = putHex(m_end, value.data2, 4);
    put('-');
    m_end = putHex(m_end, value.data3, 4);
    put('-');
    for (int i = 0; i < 8; ++i) {
        if (i == 2)
            put('-');
        m_end = putHex(m_end, value.data4[i], 2);
    }
    put('"');
}

void JsonWriter::date(base::Timestamp value) {
    using namespace std::chrono;
    constexpr base::Timestamp earliest = sys_days{year{0} / January / 1};
    constexpr base::Timestamp latest = sys_days{year{9999} / December / 31} + 23h + 59min + 59s;
    const base::Timestamp moment = std::clamp(value, earliest, latest);
    const sys_days day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss<seconds> time{moment - day};
    const auto two = [this](auto part) { m_end = putDecimal(m_end, static_cast<unsigned>(part), 2); };
    reserve(22);
    put('"');
    m_end = putDecimal(m_end, static_cast<unsigned>(static_cast<int>(date.year())), 4);
    put('-');
    two(static_cast<unsigned>(date.month()));
    put('-');
    two(static_cast<unsigned>(date.day()));
    put('T');
    two(time.hours().count());
    put(':');
    two(time.minutes().count());
    put(':');
    two(time.seconds().count());
    append("Z\"");
}

QByteArray JsonWriter::take() {
    m_bytes.truncate(m_end - m_bytes.constData());
    m_end = nullptr;
    m_limit = nullptr;
    return std::exchange(m_bytes, {});
}

void JsonWriter::grow(qsizetype count) {
    const qsizetype used = m_end - m_bytes.constData();
    m_bytes.resize(std::max(used + count, used + used / 2));
    m_end = m_bytes.data() + used;
    m_limit = m_bytes.data() + m_bytes.size();
}

void JsonWriter::append(std::string_view characters) {
    std::memcpy(m_end, characters.data(), characters.size());
    m_end += characters.size();
}

void JsonWriter::nextLine() {
    put('\n');
    const qsizetype indent = m_depth * indentWidth;
    // A copy of constant size takes a few instructions. The excess is overwritten next.
    if (indent <= usualIndent)
        std::memset(m_end, ' ', usualIndent);
    else
        std::memset(m_end, ' ', static_cast<size_t>(indent));
    m_end += indent;
}

void JsonWriter::open(char bracket) {
    reserve(1);
    put(bracket);
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::close(char bracket) {
    --m_depth;
    reserve(2 + usualIndent + m_depth * indentWidth);
    if (!m_isFirst)
        nextLine();
    put(bracket);
    m_isFirst = false;
}

} // namespace orlenta::model::json
