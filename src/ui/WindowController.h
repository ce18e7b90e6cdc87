#pragma once

#include "platform/view/Window.h"
#include "ui/Weakly.h"

#include <memory>
#include <string>
#include <utility>

namespace quillbar {

/// Owns one window and its views. Controllers are made with makeController(); whoever holds one
/// drops it when the window closes, so callbacks take their controller weakly.
class WindowController : public std::enable_shared_from_this<WindowController> {
public:
    WindowController(WindowController const&) = delete;
    WindowController& operator=(WindowController const&) = delete;
    virtual ~WindowController() = default;

    [[nodiscard]] platform::Window& window() const { return *window_; }

    /// Brings the window before all others, with the keyboard.
    void showWindow() { window_->makeKeyAndOrderFront(); }

protected:
    explicit WindowController(std::shared_ptr<platform::Window> window)
        : window_(std::move(window))
    {
    }

    /// Makes a titled window that a person can close.
    WindowController(platform::Size contentSize, std::string title)
        : window_(
            std::make_shared<platform::Window>(contentSize, platform::WindowStyle::TitledClosable))
    {
        window_->setTitle(std::move(title));
    }

private:
    template <typename Controller, typename... Arguments>
    friend std::shared_ptr<Controller> makeController(Arguments&&... arguments);

    /// Fills the window's content view; called once, when the controller can be held weakly.
    virtual void buildUserInterface() = 0;

    std::shared_ptr<platform::Window> const window_;
};

template <typename Controller, typename... Arguments>
[[nodiscard]] std::shared_ptr<Controller> makeController(Arguments&&... arguments)
{
    auto controller = std::make_shared<Controller>(std::forward<Arguments>(arguments)...);
    static_cast<WindowController&>(*controller).buildUserInterface();
    return controller;
}

} // namespace quillbar
