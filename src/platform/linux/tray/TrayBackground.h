#pragma once

#include <QObject>
#include <QWidget>
#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace quillbar::platform {

enum class Background : std::uint8_t { Dark, Light };

/// The window of the tray that embeds others (X11 only); XCB_WINDOW_NONE when there is none.
[[nodiscard]] xcb_window_t xEmbedTrayWindow();

/// Watches what an embedding tray shows behind an icon (X11 only). Such a tray gives the icon a
/// window, so the colour is read from the window's corners, which the icon must leave clear. Where
/// they are transparent, the tray may name the colour that suits its own. Main thread.
class TrayBackground : public QObject {
public:
    /// The window must outlive this. `onChange` is called, through the event loop,
    /// when the background has turned dark or light.
    TrayBackground(QWidget& iconWindow, std::function<void()> onChange);

    /// Nothing while it is unknown: before the tray has drawn, or where it is transparent and
    /// names no colour.
    [[nodiscard]] std::optional<Background> background() const { return background_; }

    [[nodiscard]] bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchWindow();
    void read();

    QWidget& iconWindow_;
    std::function<void()> onChange_;
    std::optional<Background> background_;
    bool isReadPending_ = false;
};

} // namespace quillbar::platform
