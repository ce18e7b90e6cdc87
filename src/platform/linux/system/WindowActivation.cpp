#include "platform/linux/system/WindowActivation.h"

#include "platform/Application.h"
#include "platform/linux/UserTime.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

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

xcb_connection_t* xConnection()
{
    auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t activeWindowAtom(xcb_connection_t* connection)
{
    static xcb_atom_t const atom = [connection] {
        constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
        auto const cookie = xcb_intern_atom(connection, 0, name.size(), name.data());
        std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> const reply {
            xcb_intern_atom_reply(connection, cookie, nullptr), &std::free
        };
        return reply ? reply->atom : xcb_atom_t { XCB_ATOM_NONE };
    }();
    return atom;
}

// Qt would send the time of the last event in its own windows, and window managers that guard
// against stolen focus take that for an old wish when a hotkey or the tray asks.
void sendActivation(xcb_connection_t* connection, QWindow& window)
{
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(window.winId());
    event.type = activeWindowAtom(connection);
    constexpr std::uint32_t fromPerson = 2;
    event.data.data32[0] = fromPerson;
    event.data.data32[1] = userTime();
    auto const root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root,
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
    lastActivated() = &window;
    lastActivationTime() = userTime();
    window.raise();
    if (auto* const connection = xConnection())
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
