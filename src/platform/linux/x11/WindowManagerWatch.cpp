#include "platform/linux/x11/WindowManagerWatch.h"

#include "platform/linux/x11/WindowActivation.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Window.h"

#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <array>

namespace quillbar::platform {

namespace {

xcb_window_t idOf(QWindow const& window)
{
    return static_cast<xcb_window_t>(window.winId());
}

// The place, too, is something that only a window manager gives; Qt may have taken over by now
// where the window was left.
void showAgain(xcb_connection_t* connection, QWindow const& window)
{
    auto const* const screen = window.screen();
    QRect centered({}, window.size());
    centered.moveCenter(screen->availableGeometry().center());
    // Where a screen begins is told in its own pixels, whatever the scale.
    auto const origin = screen->geometry().topLeft();
    auto const place = origin + QPointF(centered.topLeft() - origin) * window.devicePixelRatio();
    std::array const coordinates { static_cast<std::uint32_t>(qRound(place.x())),
        static_cast<std::uint32_t>(qRound(place.y())) };
    xcb_configure_window(
        connection, idOf(window), XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, coordinates.data());
    xcb_map_window(connection, idOf(window));
}

void showHiddenWindows()
{
    auto* const connection = x11Connection();
    for (auto const* const widget : QApplication::topLevelWidgets()) {
        auto* const window = widget->windowHandle();
        // An icon in a tray, for one, is none of the window manager's.
        if (!window || !window->isVisible() || window->flags() & Qt::BypassWindowManagerHint
            || !isUnmapped(*window))
            continue;
        showAgain(connection, *window);
        activateWindow(*window);
    }
}

} // namespace

void WindowManagerWatch::install()
{
    static QPointer<WindowManagerWatch> installed;
    if (!installed && x11Connection())
        installed = new WindowManagerWatch(qApp);
}

WindowManagerWatch::WindowManagerWatch(QObject* application)
    : QObject(application)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

// A window manager that starts tells of itself in this property of the root window.
bool WindowManagerWatch::nativeEventFilter(
    QByteArray const& eventType, void* message, qintptr* /*result*/)
{
    auto const* const event = x11Event(eventType, message);
    if (event == nullptr || x11EventType(*event) != XCB_PROPERTY_NOTIFY)
        return false;
    auto const* const change = reinterpret_cast<xcb_property_notify_event_t const*>(event);
    static auto const managerWindow = x11Atom(x11Connection(), "_NET_SUPPORTING_WM_CHECK");
    if (change->atom == managerWindow && change->state == XCB_PROPERTY_NEW_VALUE)
        showHiddenWindows();
    return false;
}

} // namespace quillbar::platform
