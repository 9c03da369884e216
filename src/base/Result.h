#pragma once

#include <optional>
#include <utility>
#include <variant>

namespace orlenta::base {

/// Marks a value as a Result's error, so that value and error can even have the same type.
template <typename E>
struct Failure {
    E error;
};

template <typename E>
[[nodiscard]] Failure<std::decay_t<E>> fail(E &&error) {
    return {std::forward<E>(error)};
}

/// The outcome of a fallible operation: either a value or a typed error.
template <typename T, typename E>
class [[nodiscard]] Result final {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Failure<E> failure) : m_state(std::in_place_index<1>, std::move(failure.error)) {}

    [[nodiscard]] bool hasValue() const { return m_state.index() == 0; }
    explicit operator bool() const { return hasValue(); }

    [[nodiscard]] const T &value() const & { return std::get<0>(m_state); }
    [[nodiscard]] T &value() & { return std::get<0>(m_state); }
    [[nodiscard]] T &&value() && { return std::get<0>(std::move(m_state)); }
    [[nodiscard]] const E &error() const { return std::get<1>(m_state); }

    const T *operator->() const { return &value(); }
    const T &operator*() const & { return value(); }

private:
    std::variant<T, E> m_state;
};

template <typename E>
class [[nodiscard]] Result<void, E> final {
public:
    Result() = default;
    Result(Failure<E> failure) : m_error(std::move(failure.error)) {}

    [[nodiscard]] bool hasValue() const { return !m_error.has_value(); }
    explicit operator bool() const { return hasValue(); }
    [[nodiscard]] const E &error() const { return *m_error; }

private:
    std::optional<E> m_error;
};

} // namespace orlenta::base
