#pragma once

#include <QMargins>
#include <QRegion>
#include <QWidget>
#include <QWindow>

namespace quillbar::platform {

/// Whether what is clear in a window lets the screen behind it through: always but under an X
/// server without a compositor.
[[nodiscard]] bool isTranslucencyPossible();

/// Whether the X server does not show the window, such as one that waits for the window manager, or
/// that another client unmapped; false where there is no X server.
[[nodiscard]] bool isUnmapped(QWindow const& window);

/// Cuts off what lies outside of the region, which is in device pixels.
void setShape(QWidget const& window, QRegion const& pixels);

/// Keeps a window that is not shown yet out of task bars and window switchers.
void skipTaskbar(QWidget const& window);

/// Asks the window manager how much its frame will add to a window that is not shown yet. The
/// answer takes it a moment.
void requestFrameMargins(QWidget const& window);

/// What the frame adds to the window, as far as the window manager has told of this one or of the
/// one before: the frames of titled windows are alike. Under Wayland, where a client is told
/// neither that nor how much of the screen panels cover, a usual amount for both.
[[nodiscard]] QMargins frameMargins(QWidget const& window);

/// Gives the mouse to a window that is shown; false where there is no X server, or while another
/// client holds the mouse.
[[nodiscard]] bool takeMouse(QWidget const& window);

} // namespace quillbar::platform
