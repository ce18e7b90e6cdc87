#pragma once

#include "platform/view/View.h"

#include <functional>

namespace quillbar::platform {

enum class WindowKind : std::uint8_t {
    Window,
    /// An auxiliary window, shown briefly; the system lists it in no task bar or window switcher.
    Panel,
};
enum class WindowStyle : std::uint8_t {
    /// A title bar with a close button; the size is fixed.
    TitledClosable,
    Borderless,
};
enum class WindowLevel : std::uint8_t { Normal, Floating };
enum class WindowBackground : std::uint8_t { Default, Clear };

/// A backend's side of a window; each backend defines it for itself.
struct NativeWindow;
struct NativeWindowDeleter {
    void operator()(NativeWindow* native) const;
};

/// A window on the screen, which stays visible when another program becomes active. Made with
/// std::make_shared; it appears when it is first ordered front. On a screen that is too low for it,
/// the backend shows a part of the content, which a person scrolls, as does the focus. Main thread.
class Window : public std::enable_shared_from_this<Window> {
public:
    Window(Size contentSize, WindowStyle style)
        : Window(WindowKind::Window, contentSize, style)
    {
    }
    Window(Window const&) = delete;
    Window& operator=(Window const&) = delete;
    virtual ~Window();

    void setTitle(std::string title);
    void setLevel(WindowLevel level);
    void setBackground(WindowBackground background);
    /// Where the system draws no shadow around a clear window, a backend draws a stronger border.
    void setHasShadow(bool hasShadow);
    void setMovableByBackground(bool isMovable);

    [[nodiscard]] WindowKind kind() const { return kind_; }
    [[nodiscard]] WindowStyle style() const { return style_; }
    [[nodiscard]] Size contentSize() const { return contentSize_; }
    [[nodiscard]] std::string const& title() const { return title_; }
    [[nodiscard]] WindowLevel level() const { return level_; }
    [[nodiscard]] WindowBackground background() const { return background_; }
    [[nodiscard]] bool hasShadow() const { return hasShadow_; }
    [[nodiscard]] bool isMovableByBackground() const { return isMovableByBackground_; }
    [[nodiscard]] View& contentView() const { return *contentView_; }

    /// Puts the window in the middle of the screen that the person works on.
    void center();
    /// Shows the window before all others and asks for the keyboard.
    void makeKeyAndOrderFront();
    /// Hides the window.
    void orderOut();
    /// Hides the window and tells the observers, which may destroy it.
    void close();
    /// Observers cannot be removed and are called in the order in which they were added.
    void addWillCloseObserver(std::function<void()> observer);
    /// Called each time the window becomes the key window; cannot be removed either.
    void addDidBecomeKeyObserver(std::function<void()> observer);

    [[nodiscard]] bool isVisible() const { return isVisible_; }
    [[nodiscard]] bool isCentered() const { return isCentered_; }
    /// Whether the window has the keyboard now.
    [[nodiscard]] bool isKeyWindow() const { return isKeyWindow_; }
    [[nodiscard]] virtual bool canBecomeKeyWindow() const
    {
        return style_ == WindowStyle::TitledClosable;
    }

    /// Gives the view the keyboard; null leaves it to the window alone. Does not scroll.
    void makeFirstResponder(std::shared_ptr<View> const& view);
    /// Null when no view of the window has the keyboard.
    [[nodiscard]] std::shared_ptr<View> firstResponder() const;

    [[nodiscard]] NativeWindow* native() const { return native_.get(); }

    /// A person clicked the title bar's close button.
    void userClosed() { close(); }
    void userChangedKey(bool isKeyWindow);
    /// A person moved the keyboard focus with the native side's own means.
    void userFocused(std::shared_ptr<View> const& view);
    /// A key press that no monitor consumed: a key equivalent, then the views around the focus
    /// answer to it. Without a default button Return is for the focused one. What passes is for the
    /// native side. May destroy the window.
    KeyEventResult userPressedKey(KeyEvent const& event);
    /// For a system that does not move the focus itself: Tab does so, and the arrows from a button.
    KeyEventResult userPressedFocusKey(KeyEvent const& event);

protected:
    Window(WindowKind kind, Size contentSize, WindowStyle style);

private:
    template <typename Value> void set(Value& field, Value value);
    void sync() const;
    KeyEventResult performKeyEquivalent(KeyEvent const& event);
    void moveFocus(int step);

    WindowKind const kind_;
    WindowStyle const style_;
    Size const contentSize_;
    std::string title_;
    WindowLevel level_ = WindowLevel::Normal;
    WindowBackground background_ = WindowBackground::Default;
    bool hasShadow_ = true;
    bool isMovableByBackground_ = false;
    bool isVisible_ = false;
    bool isCentered_ = false;
    bool isKeyWindow_ = false;
    bool isClosing_ = false;
    std::vector<std::function<void()>> willCloseObservers_;
    std::vector<std::function<void()>> didBecomeKeyObservers_;
    std::weak_ptr<View> firstResponder_;
    std::unique_ptr<NativeWindow, NativeWindowDeleter> native_;
    std::shared_ptr<View> contentView_;
};

/// A window of kind panel.
class Panel : public Window {
public:
    Panel(Size contentSize, WindowStyle style)
        : Window(WindowKind::Panel, contentSize, style)
    {
    }
};

/// The backend's part. A window's native side is made when it is first shown, before its views'
/// peers, and destroyed after them; destroying it must be safe while it delivers an event. A sync
/// brings all of the state over, visibility too.
[[nodiscard]] NativeWindow* createNativeWindow(Window& window);
void syncWindow(Window const& window);
void syncFirstResponder(Window const& window);
void centerNativeWindow(Window const& window);
/// The window is visible: brings it forward and asks for the keyboard if it may have it.
void raiseNativeWindow(Window const& window);

} // namespace quillbar::platform
