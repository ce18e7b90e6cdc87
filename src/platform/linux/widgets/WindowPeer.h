#pragma once

#include "platform/linux/widgets/OverlayScroller.h"
#include "platform/view/Window.h"

#include <QPainterPath>
#include <QWidget>

namespace quillbar::platform {

/// The Qt side of a window: the top-level widget.
struct NativeWindow final : public QWidget {
    explicit NativeWindow(Window& window);

    /// Gives a widget of the window the keyboard, and shows that unless the person works with the
    /// mouse.
    void focus(QWidget& widget);
    /// The mouse was used in the window: where the keyboard is does not matter until it is used.
    void noteMouse();
    /// The part of a clear window that is not clear. All else is cut off, so that compositors that
    /// draw shadows draw one around this part, and that nothing else shows without a compositor.
    void setOutline(QPainterPath const& outline);
    /// Makes the window as high as its content, but not higher than that many points: then its
    /// content scrolls.
    void setHeightLimit(int limit);
    /// How far the content is scrolled down.
    [[nodiscard]] int offset() const { return offset_; }

    /// Null once the window is gone.
    Window* portable;
    /// Whether the person works with the mouse.
    bool isMouseUsed = false;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void scrollTo(double offset);

    OverlayScroller* scroller_;
    int offset_ = 0;
};

/// The native side of the window that a widget stands in; null for widgets of other kinds.
[[nodiscard]] NativeWindow* nativeWindowOf(QWidget const* widget);

/// Gives the widgets of views their roles in the accessibility tree. Once is enough.
void installAccessibility();

} // namespace quillbar::platform
