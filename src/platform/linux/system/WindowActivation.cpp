#include "platform/linux/system/WindowActivation.h"

#include "platform/Application.h"
#include "platform/linux/UserTime.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/system/WindowManagerWatch.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace quillbar::platform {

namespace {

QPointer<QWindow>& lastActivated()
{
    static QPointer<QWindow> window;
    return window;
}

std::uint32_t& lastActivationTime()
{
    static std::uint32_t time = 0;
    return time;
}

QWindow* frontWindow()
{
    if (lastActivated() && lastActivated()->isVisible())
        return lastActivated();
    if (auto* const active = QGuiApplication::focusWindow())
        return active;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        auto const type = widget->windowType();
        if (widget->isVisible() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool))
            return widget->windowHandle();
    }
    return nullptr;
}

// Qt would send the time of the last event in its own windows, and window managers that guard
// against stolen focus take that for an old wish when a hotkey or the tray asks.
void sendActivation(xcb_connection_t* connection, QWindow& window)
{
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(window.winId());
    static auto const activeWindow = x11Atom(connection, "_NET_ACTIVE_WINDOW");
    event.type = activeWindow;
    constexpr std::uint32_t fromPerson = 2;
    event.data.data32[0] = fromPerson;
    event.data.data32[1] = userTime();
    xcb_send_event(connection, 0, x11RootWindow(connection),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<char const*>(&event));
    xcb_flush(connection);
}

} // namespace

bool isWaylandSession()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void activateWindow(QWindow& window)
{
    WindowManagerWatch::install();
    lastActivated() = &window;
    lastActivationTime() = userTime();
    window.raise();
    if (auto* const connection = x11Connection())
        sendActivation(connection, window);
    else
        window.requestActivate();
}

void setActivationToken(QString const& token)
{
    // Compositors make short ones, and Qt passes on whatever stands there: a message that is too
    // long for the connection would end the program.
    constexpr qsizetype longestToken = 512;
    if (isWaylandSession())
        qputenv("XDG_ACTIVATION_TOKEN", token.size() > longestToken ? "" : token.toUtf8());
}

QWindow* windowAwaitingFocus()
{
    auto* const window = lastActivated().data();
    bool const isAwaiting = window && window->isVisible() && lastActivationTime() == userTime()
        && window != QGuiApplication::focusWindow();
    return isAwaiting ? window : nullptr;
}

void activateIgnoringOtherApps()
{
    if (auto* const window = frontWindow())
        activateWindow(*window);
}

} // namespace quillbar::platform
