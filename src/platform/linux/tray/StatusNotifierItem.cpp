#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/DesktopApplication.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/tray/DBusMenu.h"

#include <QDBusError>
#include <QDBusMetaType>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

StatusNotifierItem::StatusNotifierItem(StatusNotifierCallbacks callbacks, MenuOwner menuOwner)
    : callbacks_(std::move(callbacks))
    , itemIsMenu_(menuOwner == MenuOwner::Host)
    , menu_(QString::fromLatin1(DBusMenu::objectPath))
{
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<ToolTip>();
    onSessionBus(this, [this](QDBusConnection bus) {
        bus.registerObject(u"/StatusNotifierItem"_s, this, QDBusConnection::ExportAllContents);
    });
}

void StatusNotifierItem::Activate(int /*x*/, int /*y*/)
{
    // Hosts open the exported menu by themselves when there is nothing to activate.
    if (itemIsMenu_)
        sendErrorReply(QDBusError::UnknownMethod, u"The host is to open the menu"_s);
    else
        callLater(callbacks_.activate);
}

void StatusNotifierItem::ContextMenu(int /*x*/, int /*y*/)
{
    // Hosts that can draw the exported menu do so instead of calling this (Plasma, waybar);
    // swaybar 1.7 draws none and calls this for either button.
    callLater(itemIsMenu_ ? callbacks_.menuMissed : callbacks_.activate);
}

void StatusNotifierItem::ProvideXdgActivationToken(QString const& token)
{
    lastUserAction().activationToken = token;
    if (auto const time = launchTime(token.toStdString()); time != 0)
        noteUserAction(time);
}

void StatusNotifierItem::callLater(std::function<void()> const& callback)
{
    QMetaObject::invokeMethod(this, callback, Qt::QueuedConnection);
}

} // namespace quillbar::platform
