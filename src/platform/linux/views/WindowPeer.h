#pragma once

#include "platform/view/Window.h"

#include <QPainterPath>
#include <QWidget>

namespace quillbar::platform {

/// The Qt side of a window: the top-level widget.
struct NativeWindow final : public QWidget {
    explicit NativeWindow(Window& window);

    /// Null once the window is gone.
    [[nodiscard]] Window* portable() const { return portable_; }
    void release();

    void sync();
    void centerOnScreen();
    void bringForward();
    /// Gives a widget of the window the keyboard, and shows that unless the person works with the
    /// mouse.
    void focus(QWidget& widget);
    /// The mouse was used in the window: where the keyboard is does not matter until it is used.
    void noteMouse();
    /// The part of a clear window that is not clear; without a compositor all else is cut off.
    void setGround(QPainterPath const& ground);

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    Window* portable_;
    bool isMouseUsed_ = false;
};

/// The native side of the window that a widget stands in; null for widgets of other kinds.
[[nodiscard]] NativeWindow* nativeWindowOf(QWidget const* widget);

} // namespace quillbar::platform
