#include "platform/linux/tray/TrayBackground.h"

#include "platform/linux/x11/X11Connection.h"

#include <QColor>
#include <QEvent>
#include <QSysInfo>
#include <QWindow>
#include <QtEndian>

#include <array>
#include <utility>

namespace quillbar::platform {

namespace {

/// The pixel with its alpha; nothing when the window is not shown or has another kind of pixels.
std::optional<QColor> pixelOf(xcb_connection_t* connection, xcb_window_t window, QPoint place)
{
    constexpr std::uint8_t opaqueDepth = 24;
    constexpr std::uint8_t translucentDepth = 32;
    XcbPtr<xcb_get_image_reply_t> const image(xcb_get_image_reply(connection,
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
            static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()), 1, 1, ~0U),
        nullptr));
    bool const isKnown = image && (image->depth == opaqueDepth || image->depth == translucentDepth)
        && xcb_get_image_data_length(image.get()) >= int { sizeof(quint32) };
    if (!isKnown)
        return std::nullopt;
    auto const* const data = xcb_get_image_data(image.get());
    auto const isLittle = xcb_get_setup(connection)->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    auto const value = isLittle ? qFromLittleEndian<quint32>(data) : qFromBigEndian<quint32>(data);
    return image->depth == opaqueDepth ? QColor::fromRgb(value) : QColor::fromRgba(value);
}

constexpr int middleGrey = 128;

/// By the tray's colour for symbolic icons, which is the first of several, as red, green and blue
/// of 16 bits.
std::optional<Background> backgroundByColors(xcb_connection_t* connection)
{
    static auto const colors = x11Atom(connection, "_NET_SYSTEM_TRAY_COLORS");
    constexpr int channels = 3;
    XcbPtr<xcb_get_property_reply_t> const reply(xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, xEmbedTrayWindow(), colors, XCB_ATOM_CARDINAL, 0, channels),
        nullptr));
    if (!reply || reply->format != 32 || reply->value_len < channels)
        return std::nullopt;
    auto const* const color = static_cast<quint32 const*>(xcb_get_property_value(reply.get()));
    auto const channel = [color](int index) { return static_cast<int>(color[index] >> 8 & 0xff); };
    return qGray(channel(0), channel(1), channel(2)) < middleGrey ? Background::Light
                                                                  : Background::Dark;
}

std::optional<Background> backgroundBehind(QWindow const& window)
{
    auto* const connection = x11Connection();
    if (connection == nullptr)
        return std::nullopt;
    auto const end = (QSizeF(window.size()) * window.devicePixelRatio()).toSize();
    std::array const corners { QPoint(0, 0), QPoint(end.width() - 1, 0),
        QPoint(0, end.height() - 1), QPoint(end.width() - 1, end.height() - 1) };
    int brightness = 0;
    for (auto const& corner : corners) {
        constexpr int halfOpaque = 128;
        auto const pixel = pixelOf(connection, static_cast<xcb_window_t>(window.winId()), corner);
        if (!pixel)
            return std::nullopt;
        if (pixel->alpha() < halfOpaque)
            return backgroundByColors(connection);
        brightness += qGray(pixel->rgb());
    }
    return brightness < middleGrey * int { corners.size() } ? Background::Dark : Background::Light;
}

} // namespace

xcb_window_t xEmbedTrayWindow()
{
    auto* const connection = x11Connection();
    if (connection == nullptr)
        return XCB_WINDOW_NONE;
    static auto const selection = x11Atom(connection, "_NET_SYSTEM_TRAY_S0");
    XcbPtr<xcb_get_selection_owner_reply_t> const reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t { XCB_WINDOW_NONE };
}

TrayBackground::TrayBackground(QWidget& iconWindow, std::function<void()> onChange)
    : iconWindow_(iconWindow)
    , onChange_(std::move(onChange))
{
    iconWindow_.installEventFilter(this);
    watchWindow();
}

bool TrayBackground::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (event->type() == QEvent::WinIdChange)
        watchWindow();
    bool const isShowing = event->type() == QEvent::Paint || event->type() == QEvent::Expose;
    // Only after the event has been handled are the new pixels on the screen.
    if (isShowing && !std::exchange(isReadPending_, true))
        QMetaObject::invokeMethod(
            this, [this] { read(); }, Qt::QueuedConnection);
    return false;
}

// When the tray shows the window, that gets an Expose event, but the widget no Paint event.
void TrayBackground::watchWindow()
{
    if (auto* const window = iconWindow_.windowHandle())
        window->installEventFilter(this);
}

void TrayBackground::read()
{
    isReadPending_ = false;
    auto const* const window = iconWindow_.windowHandle();
    auto const background = window ? backgroundBehind(*window) : std::nullopt;
    if (!background || background == background_)
        return;
    background_ = background;
    onChange_();
}

} // namespace quillbar::platform
