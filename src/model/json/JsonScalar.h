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

/// A single value of a document. Null counts as a missing key. Structure is an unexpected object or array, or a number
/// that doesn't fit a double.
struct Scalar {
    enum class Kind { Null, Text, Integer, Number, Boolean, Structure };

    Kind kind = Kind::Null;
    /// Valid UTF-8, which lives until the call that receives it returns.
    std::string_view text;
    std::int64_t integer = 0;
    double number = 0.0;
    bool boolean = false;
};

/// Shares one string for each of the few words that repeat in every line and take.
class WordCache final {
public:
    [[nodiscard]] QString word(std::string_view text);

private:
    std::array<QString, 8> m_words;
    size_t m_next = 0;
};

[[nodiscard]] bool isValidUtf8(std::string_view text);
/// The text of valid UTF-8, with a leading U+FEFF if it has one.
[[nodiscard]] QString decodedText(std::string_view utf8);
/// The 8-4-4-4-12 form, upper or lower case.
[[nodiscard]] std::optional<QUuid> parseUuid(std::string_view text);
/// Only the form "2024-05-31T23:59:59Z".
[[nodiscard]] std::optional<base::Timestamp> parseDate(std::string_view text);

/// Each returns false, and leaves the target unchanged, if the value has another kind or form.
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
