#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "model/json/JsonScalar.h"

namespace orlenta::model::json {

struct Schema;
struct ReadingContext;

/// What happens if a field is missing or has the wrong type.
enum class Presence : std::uint8_t {
    /// Missing or wrong: decoding fails.
    Required,
    /// Missing: the record's default. Wrong: decoding fails.
    Optional,
    /// An older key. Kept aside, and checked only if the record's `finish` uses it.
    Older,
    /// Wrong in any way counts as missing.
    Tolerated,
};

/// One key of a record. The functions receive the record as an untyped pointer; the tables that define them know its
/// type.
struct Field {
    enum class Shape : std::uint8_t { Scalar, ScalarArray, Object, ObjectArray };

    std::string_view key;
    Presence presence = Presence::Required;
    Shape shape = Shape::Scalar;
    /// Reads a scalar, or one element of an array of scalars. Returns false if the type or form is wrong.
    bool (*read)(void *record, const Scalar &value, ReadingContext &context) = nullptr;
    /// Creates a nested record, or one more element, and returns its address.
    void *(*open)(void *record) = nullptr;
    /// Removes what `open` created. Only for tolerated fields.
    void (*drop)(void *record) = nullptr;
    const Schema *schema = nullptr;
};

/// The keys of a record found so far.
class SeenKeys final {
public:
    SeenKeys(const Schema &schema, std::uint32_t mask) : m_schema(schema), m_mask(mask) {}
    [[nodiscard]] bool contains(std::string_view key) const;

private:
    const Schema &m_schema;
    std::uint32_t m_mask;
};

/// One kind of record, with its keys in ascending order, so that our own files match without searching.
struct Schema {
    /// Resolves what depends on several keys. Returns the reason why the record is invalid; empty on success.
    using Finish = QString (*)(void *record, const SeenKeys &seen, ReadingContext &context);

    constexpr explicit Schema(std::span<const Field> allFields, Finish last = nullptr)
        : fields(allFields), finish(last) {
        for (size_t i = 0; i < fields.size(); ++i)
            requiredMask |= std::uint32_t{fields[i].presence == Presence::Required} << i;
    }

    std::span<const Field> fields;
    Finish finish = nullptr;
    /// Bit i is for fields[i].
    std::uint32_t requiredMask = 0;
};

/// The value of an older key in the current record.
struct OlderValue {
    Scalar::Kind kind = Scalar::Kind::Null;
    QString text;
    bool boolean = false;
};

/// What reading needs besides the record.
struct ReadingContext {
    /// The date for records without one.
    base::Timestamp now;
    WordCache words;
    /// Cleared by the `finish` that uses them; records with older keys don't nest.
    std::array<OlderValue, 4> older;
};

} // namespace orlenta::model::json
