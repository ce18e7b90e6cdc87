#pragma once

#include <functional>
#include <utility>

namespace quillbar::platform::headless {

/// Has reset() call `forget` too; called while the program loads.
void addReset(std::function<void()> forget);

/// One line in journal().
void note(char const* effect);

/// What one topic records and what it was told to answer; as made with every reset(). One per
/// topic, at namespace scope.
template <typename Values> class State {
public:
    State()
    {
        // What is forgotten may hold the last reference to a controller, whose end uses the
        // state again; it must find the new one.
        addReset(
            [this] { [[maybe_unused]] auto const forgotten = std::exchange(values_, Values {}); });
    }
    State(State const&) = delete;
    State& operator=(State const&) = delete;
    ~State() = default;

    [[nodiscard]] Values& operator*() { return values_; }
    [[nodiscard]] Values* operator->() { return &values_; }

private:
    Values values_;
};

} // namespace quillbar::platform::headless
