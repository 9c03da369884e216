#include "model/json/JsonScalar.h"

#include <algorithm>
#include <cstring>

namespace orlenta::model::json {
namespace {

constexpr std::array<std::int8_t, 256> makeHexValues() {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (int digit = 0; digit < 10; ++digit)
        values[static_cast<size_t>('0' + digit)] = static_cast<std::int8_t>(digit);
    for (int digit = 0; digit < 6; ++digit) {
        values[static_cast<size_t>('a' + digit)] = static_cast<std::int8_t>(10 + digit);
        values[static_cast<size_t>('A' + digit)] = static_cast<std::int8_t>(10 + digit);
    }
    return values;
}
constexpr std::array<std::int8_t, 256> hexValues = makeHexValues();

// The last block overlaps the previous one: checking the rest byte by byte would take longer than everything else.
bool isAscii(std::string_view text) {
    using Block = std::uint64_t;
    const auto blockAt = [&](size_t position) {
        Block block = 0;
        std::memcpy(&block, text.data() + position, sizeof block);
        return block;
    };
    Block seen = 0;
    if (text.size() < sizeof(Block)) {
        for (const char character : text)
            seen |= static_cast<unsigned char>(character);
        return (seen & 0x80) == 0;
    }
    for (size_t i = 0; i + sizeof(Block) <= text.size(); i += sizeof(Block))
        seen |= blockAt(i);
    seen |= blockAt(text.size() - sizeof(Block));
    return (seen & 0x8080808080808080) == 0;
}

// The length of the well-formed sequence at the start of `text`, or 0. The narrower limits of the second byte reject
// overlong forms, surrogates and code points above U+10FFFF.
size_t sequenceLength(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest)
        return 0;
    for (size_t i = 2; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    return length;
}

std::optional<int> decimal(std::string_view text, size_t position, size_t digits) {
    int value = 0;
    for (size_t i = position; i < position + digits; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

} // namespace

QString decodedText(std::string_view utf8) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    // QString takes this for a mark of the encoding and drops it. Here it's part of the text.
    if (utf8.substr(0, 3) == "\xEF\xBB\xBF")
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

QString WordCache::word(std::string_view text) {
    const QLatin1String latin(text.data(), static_cast<qsizetype>(text.size()));
    // Beyond ASCII, a byte isn't a character, and the comparison below would be wrong.
    if (!isAscii(text))
        return decodedText(text);
    const auto known = std::find(m_words.begin(), m_words.end(), latin);
    if (known != m_words.end())
        return *known;
    QString &slot = m_words[m_next];
    m_next = (m_next + 1) % m_words.size();
    slot = latin;
    return slot;
}

bool isValidUtf8(std::string_view text) {
    if (isAscii(text))
        return true;
    while (!text.empty()) {
        const size_t length = sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::optional<QUuid> parseUuid(std::string_view text) {
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-')
        return std::nullopt;
    std::array<uchar, 16> bytes{};
    constexpr std::array<std::uint8_t, 16> positions{0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
    int invalid = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const int high = hexValues[static_cast<unsigned char>(text[positions[i]])];
        const int low = hexValues[static_cast<unsigned char>(text[positions[i] + 1U])];
        invalid |= high | low;
        bytes[i] = static_cast<uchar>((high * 16 + low) & 0xFF);
    }
    if (invalid < 0)
        return std::nullopt;
    const auto pair = [&](size_t i) { return static_cast<ushort>(bytes[i] << 8 | bytes[i + 1]); };
    return QUuid(uint{pair(0)} << 16 | pair(2), pair(4), pair(6), bytes[8], bytes[9], bytes[10], bytes[11], bytes[12],
                 bytes[13], bytes[14], bytes[15]);
}

std::optional<base::Timestamp> parseDate(std::string_view text) {
    using namespace std::chrono;
    if (text.size() != 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' ||
        text[16] != ':' || text[19] != 'Z')
        return std::nullopt;
    const auto yearPart = decimal(text, 0, 4);
    const auto monthPart = decimal(text, 5, 2);
    const auto dayPart = decimal(text, 8, 2);
    const auto hour = decimal(text, 11, 2);
    const auto minute = decimal(text, 14, 2);
    const auto second = decimal(text, 17, 2);
    if (!yearPart || !monthPart || !dayPart || !hour || !minute || !second)
        return std::nullopt;
    const year_month_day date{year{*yearPart}, month{static_cast<unsigned>(*monthPart)},
                              day{static_cast<unsigned>(*dayPart)}};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    return sys_days{date} + hours{*hour} + minutes{*minute} + seconds{*second};
}

bool assign(QString &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Text)
        return false;
    target = decodedText(value.text);
    return true;
}

bool assign(std::int64_t &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Integer)
        return false;
    target = value.integer;
    return true;
}

bool assign(double &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Integer && value.kind != Scalar::Kind::Number)
        return false;
    target = value.number;
    return true;
}

bool assign(bool &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Boolean)
        return false;
    target = value.boolean;
    return true;
}

bool assign(QUuid &target, const Scalar &value) {
    const auto uuid = value.kind == Scalar::Kind::Text ? parseUuid(value.text) : std::nullopt;
    if (uuid)
        target = *uuid;
    return uuid.has_value();
}

bool assign(base::Timestamp &target, const Scalar &value) {
    const auto date = value.kind == Scalar::Kind::Text ? parseDate(value.text) : std::nullopt;
    if (date)
        target = *date;
    return date.has_value();
}

bool assign(DirectionMode &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Text || (value.text != "text" && value.text != "voice"))
        return false;
    target = value.text == "text" ? DirectionMode::Text : DirectionMode::Voice;
    return true;
}

bool assign(PronunciationMode &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Text || (value.text != "simple" && value.text != "advanced"))
        return false;
    target = value.text == "simple" ? PronunciationMode::Simple : PronunciationMode::Advanced;
    return true;
}

bool assign(PhonemeAlphabet &target, const Scalar &value) {
    if (value.kind != Scalar::Kind::Text || (value.text != "cmu" && value.text != "ipa"))
        return false;
    target = value.text == "cmu" ? PhonemeAlphabet::Cmu : PhonemeAlphabet::Ipa;
    return true;
}

} // namespace orlenta::model::json
