#pragma once

#include <functional>
#include <utility>

namespace quillbar::platform {

/// Holds something that was claimed from the system; its destruction gives it back. Main thread.
/// An empty token holds nothing.
class Token {
public:
    Token() = default;
    explicit Token(std::function<void()> undo)
        : undo_(std::move(undo))
    {
    }
    Token(Token const&) = delete;
    Token& operator=(Token const&) = delete;
    Token(Token&& other) noexcept
        : undo_(std::exchange(other.undo_, nullptr))
    {
    }
    Token& operator=(Token&& other) noexcept
    {
        if (this != &other) {
            reset();
            undo_ = std::exchange(other.undo_, nullptr);
        }
        return *this;
    }
    ~Token() { reset(); }

    void reset()
    {
        if (auto undo = std::exchange(undo_, nullptr))
            undo();
    }

    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(undo_); }

private:
    std::function<void()> undo_;
};

} // namespace quillbar::platform
