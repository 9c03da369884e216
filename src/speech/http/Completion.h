#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

namespace orlenta::speech {

/// A value that one coroutine awaits and other code resolves. Only the first value counts; copies share it. Its creator
/// must resolve it on every path, destruction included: otherwise the coroutine never resumes. One thread.
template <typename T>
class Completion final {
public:
    void resolve(T value) const {
        if (m_state->value)
            return;
        m_state->value = std::move(value);
        if (const auto waiter = std::exchange(m_state->waiter, {}))
            waiter.resume();
    }

    [[nodiscard]] bool isSameAs(const Completion &other) const { return m_state == other.m_state; }

    bool await_ready() const noexcept { return m_state->value.has_value(); }
    void await_suspend(std::coroutine_handle<> waiter) const noexcept { m_state->waiter = waiter; }
    T await_resume() const { return *m_state->value; }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> waiter;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace orlenta::speech
