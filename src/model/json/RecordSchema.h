#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "model/json/JsonScalar.h"

namespace orlenta::model::json {

struct Schema;
struct ReadingContext;

/// What a reader does about a field that is missing or holds the wrong kind of value.
enum class Presence : std::uint8_t {
    /// Missing and wrong both fail the document.
    Required,
    /// Missing leaves the record's own default; wrong fails the document.
    Optional,
    /// An older spelling: kept aside, judged only if the record's `finish` turns to it.
    Older,
    /// Wrong in any way counts as missing.
    Tolerated,
};

/// One key of a record. Functions are handed the record as an untyped pointer; the tables that build them know its
/// type.
struct Field {
    enum class Shape : std::uint8_t { Scalar, ScalarArray, Object, ObjectArray };

    std::string_view key;
    Presence presence = Presence::Required;
    Shape shape = Shape::Scalar;
    /// Takes a scalar, or one element of an array of scalars. False: wrong kind or form.
    bool (*read)(void *record, const Scalar &value, ReadingContext &context) = nullptr;
    /// Makes room for a nested record, or for one more element, and gives its address.
    void *(*open)(void *record) = nullptr;
    /// Takes back what `open` made; tolerated fields alone have it.
    void (*drop)(void *record) = nullptr;
    const Schema *schema = nullptr;
};

/// Which keys of a record the reader met.
class SeenKeys final {
public:
    SeenKeys(const Schema &schema, std::uint32_t mask) : m_schema(schema), m_mask(mask) {}
    [[nodiscard]] bool contains(std::string_view key) const;

private:
    const Schema &m_schema;
    std::uint32_t m_mask;
};

/// One kind of record: its keys in ascending order, so that a file of our own is matched without searching.
struct Schema {
    /// Settles what depends on several keys. A text is the reason why the record fails; empty is success.
    using Finish = QString (*)(void *record, const SeenKeys &seen, ReadingContext &context);

    constexpr explicit Schema(std::span<const Field> allFields, Finish last = nullptr)
        : fields(allFields), finish(last) {
        for (size_t i = 0; i < fields.size(); ++i)
            requiredMask |= std::uint32_t{fields[i].presence == Presence::Required} << i;
    }

    std::span<const Field> fields;
    Finish finish = nullptr;
    /// Bit i stands for fields[i].
    std::uint32_t requiredMask = 0;
};

/// The value under an older key of the record being read.
struct OlderValue {
    Scalar::Kind kind = Scalar::Kind::Null;
    QString text;
    bool boolean = false;
};

/// What reading needs beside the record itself.
struct ReadingContext {
    /// Dates records that carry no date.
    base::Timestamp now;
    WordCache words;
    /// Cleared by the `finish` that used them; no record with older keys holds another.
    std::array<OlderValue, 4> older;
};

} // namespace orlenta::model::json
