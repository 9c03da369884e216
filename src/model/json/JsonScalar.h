#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include <QtCore/QString>

#include "base/Clock.h"
#include "base/TypedId.h"
#include "model/DirectionMode.h"
#include "model/PronunciationEntry.h"

namespace orlenta::model::json {

/// One value as it stands in a document. A null is a missing key; a structure is an object or array
/// where none belongs, or a number that no double can hold.
struct Scalar {
    enum class Kind { Null, Text, Integer, Number, Boolean, Structure };

    Kind kind = Kind::Null;
    /// UTF-8, checked; lives as long as the call that hands it over.
    std::string_view text;
    std::int64_t integer = 0;
    double number = 0.0;
    bool boolean = false;
};

/// Gives one shared string for each of the few words that stand in every line and take.
class WordCache final {
public:
    [[nodiscard]] QString word(std::string_view text);

private:
    std::array<QString, 8> m_words;
    size_t m_next = 0;
};

[[nodiscard]] bool isValidUtf8(std::string_view text);
/// The 8-4-4-4-12 form in either case.
[[nodiscard]] std::optional<QUuid> parseUuid(std::string_view text);
/// "2024-05-31T23:59:59Z" and no other form.
[[nodiscard]] std::optional<base::Timestamp> parseDate(std::string_view text);

/// Each gives false, and leaves the target alone, when the value is of another kind or form.
bool assign(QString &target, const Scalar &value);
bool assign(std::int64_t &target, const Scalar &value);
bool assign(double &target, const Scalar &value);
bool assign(bool &target, const Scalar &value);
bool assign(QUuid &target, const Scalar &value);
bool assign(base::Timestamp &target, const Scalar &value);
bool assign(DirectionMode &target, const Scalar &value);
bool assign(PronunciationMode &target, const Scalar &value);
bool assign(PhonemeAlphabet &target, const Scalar &value);

template <typename Tag>
bool assign(base::TypedId<Tag> &target, const Scalar &value) {
    QUuid uuid;
    if (!assign(uuid, value))
        return false;
    target = base::TypedId<Tag>(uuid);
    return true;
}

template <typename T>
bool assign(std::optional<T> &target, const Scalar &value) {
    T content{};
    if (!assign(content, value))
        return false;
    target = std::move(content);
    return true;
}

} // namespace orlenta::model::json
