#include "model/json/RecordReader.h"

#include <charconv>
#include <cstring>

// The parser with its vector code, in a separate namespace because other sources compile the same headers without it.
#ifdef __SSE2__
#define RAPIDJSON_SSE2
#endif
#define RAPIDJSON_NAMESPACE orlenta::model::json::vectorised
#define RAPIDJSON_NAMESPACE_BEGIN namespace orlenta::model::json::vectorised {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace orlenta::model::json {
namespace {

// In place, so that strings aren't copied before their record takes them. Numbers as text, since the parser's exact
// conversion gives arbitrary results for a zero with a large exponent. Recursive, since the iterative parser takes a
// quarter longer; the nesting limit protects the stack.
constexpr unsigned parseFlags = vectorised::kParseInsituFlag | vectorised::kParseNumbersAsStringsFlag;
constexpr qsizetype deepestNesting = 512;

// The vector code reads whole aligned blocks, so it may read past the end of the text.
constexpr qsizetype padding = 32;

qsizetype byteOrderMarkSize(const QByteArray &bytes) {
    return bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

// Faster than a library call for a dozen bytes.
inline bool isSameKey(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= a.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t left = 0;
        std::uint64_t right = 0;
        std::memcpy(&left, a.data() + i, sizeof left);
        std::memcpy(&right, b.data() + i, sizeof right);
        if (left != right)
            return false;
    }
    while (i < a.size() && a[i] == b[i])
        ++i;
    return i == a.size();
}

// JSON forbids control characters, but the vector code accepts them inside strings.
bool hasMissedControls(const QByteArray &text) {
    std::uint8_t found = 0;
    for (const char character : text)
        found = static_cast<std::uint8_t>(found | (static_cast<std::uint8_t>(character - 0x1A) < 6 ? 1 : 0));
    return found != 0;
}

QString noJson(size_t position, const QString &reason) {
    return QStringLiteral("The text is not JSON at byte %1: %2").arg(position).arg(reason);
}

} // namespace

bool SeenKeys::contains(std::string_view key) const {
    for (size_t i = 0; i < m_schema.fields.size(); ++i)
        if (m_schema.fields[i].key == key)
            return (m_mask >> i & 1) != 0;
    return false;
}

RecordReader::RecordReader(const Field &root, void *target, base::Timestamp now) : m_context{now, {}, {}} {
    m_frames.reserve(16);
    Frame outermost;
    outermost.record = target;
    outermost.field = &root;
    m_frames.push_back(outermost);
}

RecordReader::Outcome RecordReader::read(QByteArray bytes, const Field &root, void *target, base::Timestamp now) {
    if (hasMissedControls(bytes))
        return {std::nullopt, QStringLiteral("The text is not JSON: it contains control characters.")};
    const auto size = static_cast<size_t>(bytes.size() - byteOrderMarkSize(bytes));
    bytes.append(padding, '\0');
    RecordReader handler(root, target, now);
    vectorised::InsituStringStream stream(bytes.data() + byteOrderMarkSize(bytes));
    vectorised::Reader parser;
    const vectorised::ParseResult result = parser.Parse<parseFlags>(stream, handler);
    if (handler.m_hasInvalidText)
        return {std::nullopt, QStringLiteral("The text is not valid UTF-8 near byte %1.").arg(result.Offset())};
    if (handler.m_isTooDeep)
        return {std::nullopt, noJson(result.Offset(), QStringLiteral("it is nested too deeply."))};
    if (result.IsError())
        return {std::nullopt, noJson(result.Offset(), QLatin1String(vectorised::GetParseError_En(result.Code())))};
    // The parser stops at a NUL.
    if (stream.Tell() != size)
        return {std::nullopt, noJson(stream.Tell(), QStringLiteral("there is text after its end."))};
    return {handler.m_version, handler.m_problem};
}

bool RecordReader::Null() {
    takeScalar({});
    return true;
}

bool RecordReader::Bool(bool value) {
    Scalar scalar;
    scalar.kind = Scalar::Kind::Boolean;
    scalar.boolean = value;
    takeScalar(scalar);
    return true;
}

bool RecordReader::RawNumber(const char *text, unsigned length, bool) {
    Scalar scalar;
    const char *end = text + length;
    if (const auto [rest, error] = std::from_chars(text, end, scalar.integer); error == std::errc() && rest == end) {
        scalar.kind = Scalar::Kind::Integer;
        scalar.number = static_cast<double>(scalar.integer);
    } else {
        const bool isInRange = std::from_chars(text, end, scalar.number).ec == std::errc();
        scalar.kind = isInRange ? Scalar::Kind::Number : Scalar::Kind::Structure;
    }
    takeScalar(scalar);
    return true;
}

bool RecordReader::String(const char *characters, unsigned length, bool) {
    Scalar scalar;
    scalar.kind = Scalar::Kind::Text;
    scalar.text = {characters, length};
    m_hasInvalidText = !isValidUtf8(scalar.text);
    if (!m_hasInvalidText)
        takeScalar(scalar);
    return !m_hasInvalidText;
}

bool RecordReader::Key(const char *characters, unsigned length, bool) {
    const std::string_view key(characters, length);
    m_isVersionNext = m_depth == 1 && key == "schema_version";
    if (isLive() && selectField(key))
        return true;
    m_hasInvalidText = !isValidUtf8(key);
    return !m_hasInvalidText;
}

bool RecordReader::StartObject() {
    const Field *field = fieldFor(Structure::Object);
    ++m_depth;
    m_isTooDeep = m_depth > deepestNesting;
    if (field == nullptr)
        return !m_isTooDeep;
    Frame record;
    record.schema = field->schema;
    record.record = field->open(m_frames.back().record);
    record.depth = m_depth;
    m_frames.push_back(record);
    return true;
}

bool RecordReader::EndObject(unsigned) {
    if (isLive())
        closeRecord();
    --m_depth;
    return true;
}

bool RecordReader::StartArray() {
    const Field *field = fieldFor(Structure::Array);
    ++m_depth;
    m_isTooDeep = m_depth > deepestNesting;
    if (field == nullptr)
        return !m_isTooDeep;
    Frame array;
    array.record = m_frames.back().record;
    array.field = field;
    array.depth = m_depth;
    array.isArray = true;
    m_frames.push_back(array);
    return true;
}

bool RecordReader::EndArray(unsigned) {
    if (isLive())
        m_frames.pop_back();
    --m_depth;
    return true;
}

// Our own files have their keys in the table's order, so start after the last match.
bool RecordReader::selectField(std::string_view key) {
    Frame &frame = m_frames.back();
    const std::span<const Field> fields = frame.schema->fields;
    frame.field = nullptr;
    for (size_t tried = 0; tried < fields.size(); ++tried) {
        const size_t index = frame.nextField;
        frame.nextField = index + 1 < fields.size() ? index + 1 : 0;
        if (!isSameKey(fields[index].key, key))
            continue;
        if ((frame.seen >> index & 1) == 0)
            frame.field = &fields[index];
        return true;
    }
    return false;
}

const Field *RecordReader::fieldFor(Structure structure) {
    m_isVersionNext = false;
    if (!isLive() || m_frames.back().field == nullptr)
        return nullptr;
    Frame &frame = m_frames.back();
    const Field &field = *frame.field;
    const bool holdsObjects = field.shape == (frame.isArray ? Field::Shape::ObjectArray : Field::Shape::Object);
    const bool holdsArray =
        !frame.isArray && (field.shape == Field::Shape::ScalarArray || field.shape == Field::Shape::ObjectArray);
    frame.elements += frame.isArray ? 1 : 0;
    if (structure == Structure::Object ? holdsObjects : holdsArray) {
        markSeen();
        return &field;
    }
    Scalar misplaced;
    misplaced.kind = Scalar::Kind::Structure;
    if (field.presence == Presence::Older)
        takeScalar(misplaced);
    else
        fail(QStringLiteral("the value has the wrong type"));
    return nullptr;
}

void RecordReader::takeScalar(const Scalar &value) {
    if (m_isVersionNext && value.kind == Scalar::Kind::Integer && !m_version)
        m_version = value.integer;
    m_isVersionNext = false;
    if (!isLive() || m_frames.back().field == nullptr)
        return;
    Frame &frame = m_frames.back();
    const bool isMember = !frame.isArray && frame.schema != nullptr;
    if (isMember && value.kind == Scalar::Kind::Null)
        return;
    frame.elements += frame.isArray ? 1 : 0;
    const Field &field = *frame.field;
    const bool fits = field.shape == (frame.isArray ? Field::Shape::ScalarArray : Field::Shape::Scalar);
    if (fits && field.read(frame.record, value, m_context))
        markSeen();
    else
        fail(QStringLiteral("the value has the wrong type"));
}

void RecordReader::markSeen() {
    Frame &frame = m_frames.back();
    if (!frame.isArray && frame.schema != nullptr)
        frame.seen |= std::uint32_t{1} << (frame.field - frame.schema->fields.data());
}

void RecordReader::closeRecord() {
    Frame &frame = m_frames.back();
    const Schema &schema = *frame.schema;
    // From here on a failure concerns the whole record, not the last key.
    frame.field = nullptr;
    for (size_t i = 0; i < schema.fields.size(); ++i) {
        if ((schema.requiredMask & ~frame.seen) >> i & 1)
            return fail(QStringLiteral("the key \"%1\" is missing").arg(decodedText(schema.fields[i].key)));
    }
    if (schema.finish != nullptr) {
        const QString reason = schema.finish(frame.record, SeenKeys(schema, frame.seen), m_context);
        if (!reason.isEmpty())
            return fail(reason);
    }
    m_frames.pop_back();
}

// Fails the document, or only the innermost tolerated value around the failure. The rest of that value is skipped,
// since the parser is deeper than the remaining frames.
void RecordReader::fail(const QString &reason) {
    for (size_t i = m_frames.size(); i-- > 0;) {
        const Frame &frame = m_frames[i];
        if (frame.isArray || frame.field == nullptr || frame.field->presence != Presence::Tolerated)
            continue;
        frame.field->drop(frame.record);
        m_frames.resize(i + 1);
        return;
    }
    const QString place = path();
    m_problem = place.isEmpty() ? reason : place + QStringLiteral(": ") + reason;
}

QString RecordReader::path() const {
    QString result;
    for (const Frame &frame : m_frames) {
        if (frame.isArray) {
            result += QStringLiteral("[%1]").arg(frame.elements - 1);
        } else if (frame.field != nullptr && !frame.field->key.empty()) {
            if (!result.isEmpty())
                result += u'.';
            result += decodedText(frame.field->key);
        }
    }
    return result;
}

} // namespace orlenta::model::json
