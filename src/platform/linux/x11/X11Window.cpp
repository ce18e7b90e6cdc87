#include "platform/linux/x11/X11Window.h"

#include "platform/linux/x11/X11Connection.h"

#include <QWindow>
#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace quillbar::platform {

bool isTranslucencyPossible()
{
    auto* const connection = x11Connection();
    if (!connection)
        return true;
    static auto const atom = x11Atom(connection, "_NET_WM_CM_S0");
    XcbPtr<xcb_get_selection_owner_reply_t> const reply { xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, atom), nullptr) };
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool isUnmapped(QWindow const& window)
{
    auto* const connection = x11Connection();
    if (!connection)
        return false;
    auto const id = static_cast<xcb_window_t>(window.winId());
    XcbPtr<xcb_get_window_attributes_reply_t> const reply { xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, id), nullptr) };
    return reply && reply->map_state == XCB_MAP_STATE_UNMAPPED;
}

// QWidget::setMask() takes points, which are blocks of pixels on a scaled screen.
void setShape(QWidget const& window, QRegion const& pixels)
{
    auto* const connection = x11Connection();
    if (!connection)
        return;
    std::vector<xcb_rectangle_t> rectangles;
    for (auto const& part : pixels)
        rectangles.push_back({ static_cast<std::int16_t>(part.x()),
            static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
            static_cast<std::uint16_t>(part.height()) });
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
        XCB_CLIP_ORDERING_YX_BANDED, static_cast<xcb_window_t>(window.winId()), 0, 0,
        static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

void skipTaskbar(QWidget const& window)
{
    auto* const connection = x11Connection();
    if (!connection)
        return;
    static auto const state = x11Atom(connection, "_NET_WM_STATE");
    static std::array const skipped { x11Atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
        x11Atom(connection, "_NET_WM_STATE_SKIP_PAGER") };
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE,
        static_cast<xcb_window_t>(window.winId()), state, XCB_ATOM_ATOM, 32, skipped.size(),
        skipped.data());
}

void requestFrameMargins(QWidget const& window)
{
    auto* const connection = x11Connection();
    if (!connection)
        return;
    static auto const atom = x11Atom(connection, "_NET_REQUEST_FRAME_EXTENTS");
    askWindowManager(connection, static_cast<xcb_window_t>(window.winId()), atom);
}

QMargins frameMargins(QWidget const& window)
{
    static QMargins lastKnown;
    auto* const connection = x11Connection();
    if (!connection) {
        constexpr int titleBarAndPanel = 72;
        return { 0, titleBarAndPanel, 0, 0 };
    }
    static auto const atom = x11Atom(connection, "_NET_FRAME_EXTENTS");
    constexpr std::uint32_t sides = 4;
    XcbPtr<xcb_get_property_reply_t> const reply { xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, static_cast<xcb_window_t>(window.winId()), atom,
            XCB_ATOM_CARDINAL, 0, sides),
        nullptr) };
    if (reply && reply->format == 32 && reply->value_len == sides) {
        auto const* const side
            = static_cast<std::uint32_t const*>(xcb_get_property_value(reply.get()));
        auto const size = [&](std::size_t index) {
            return static_cast<int>(std::min(side[index], 512U) / window.devicePixelRatioF());
        };
        lastKnown = { size(0), size(2), size(1), size(3) };
    }
    return lastKnown;
}

bool takeMouse(QWidget const& window)
{
    auto* const connection = x11Connection();
    auto* const handle = window.windowHandle();
    if (!connection || !handle)
        return false;
    // Qt takes a refusal for success, so whether the mouse is free is asked right before, when Qt
    // does not hold it itself. Holding the server in between would be safer, but would stop the
    // whole desktop when this process is stopped here.
    // Qt's grab takes the place of this one, which the same client holds: a click between two grabs
    // would be lost.
    handle->setMouseGrabEnabled(false);
    XcbPtr<xcb_grab_pointer_reply_t> const reply { xcb_grab_pointer_reply(connection,
        xcb_grab_pointer(connection, 0, static_cast<xcb_window_t>(handle->winId()),
            XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
            XCB_NONE, XCB_CURRENT_TIME),
        nullptr) };
    bool const isTaken
        = reply && reply->status == XCB_GRAB_STATUS_SUCCESS && handle->setMouseGrabEnabled(true);
    if (!isTaken)
        xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    return isTaken;
}

} // namespace quillbar::platform
