#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/UserAction.h"
#include "platform/linux/system/DesktopApplication.h"
#include "platform/linux/tray/DBusMenu.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

auto const itemInterface = u"org.kde.StatusNotifierItem"_s;

void noteActivationToken(QString const& token)
{
    lastUserAction().activationToken = token;
    if (auto const time = launchTime(token.toStdString()); time != 0)
        noteUserAction(time);
}

} // namespace

StatusNotifierItem::StatusNotifierItem(
    QDBusConnection connection, StatusNotifierFace face, MenuOwner menuOwner)
    : connection_(std::move(connection))
    , face_(std::move(face))
    , menuOwner_(menuOwner)
{
    registerTrayTypes();
    connection_.registerVirtualObject(QString::fromLatin1(objectPath), this);
}

StatusNotifierItem::~StatusNotifierItem()
{
    connection_.unregisterObject(QString::fromLatin1(objectPath));
}

void StatusNotifierItem::emitNewIcon()
{
    emitSignal(u"NewIcon"_s);
}

void StatusNotifierItem::emitNewToolTip()
{
    emitSignal(u"NewToolTip"_s);
}

bool StatusNotifierItem::handleMessage(
    QDBusMessage const& message, QDBusConnection const& connection)
{
    return answer(message, connection, [this](auto const& call) { return reply(call); });
}

QString StatusNotifierItem::introspect(QString const& /*path*/) const
{
    return uR"xml(<interface name="org.kde.StatusNotifierItem">
<property name="Category" type="s" access="read"/>
<property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/>
<property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/>
<property name="IconName" type="s" access="read"/>
<property name="IconThemePath" type="s" access="read"/>
<property name="IconPixmap" type="a(iiay)" access="read"/>
<property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
<property name="ItemIsMenu" type="b" access="read"/>
<property name="Menu" type="o" access="read"/>
<method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
<method name="ContextMenu"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
<method name="Scroll"><arg type="i" direction="in"/><arg type="s" direction="in"/></method>
<method name="ProvideXdgActivationToken"><arg type="s" direction="in"/></method>
<signal name="NewTitle"/>
<signal name="NewIcon"/>
<signal name="NewToolTip"/>
<signal name="NewStatus"><arg type="s"/></signal>
</interface>
)xml"_s;
}

std::vector<ReadableProperty> StatusNotifierItem::properties() const
{
    return {
        { u"Category"_s, [] { return QVariant(u"ApplicationStatus"_s); } },
        { u"Id"_s, [] { return QVariant(u"quillbar"_s); } },
        { u"Title"_s, [this] { return QVariant(face_.title()); } },
        { u"Status"_s, [] { return QVariant(u"Active"_s); } },
        { u"WindowId"_s, [] { return QVariant(0); } },
        { u"IconName"_s, [this] { return QVariant(face_.iconName()); } },
        { u"IconThemePath"_s, [this] { return QVariant(face_.iconThemePath()); } },
        { u"IconPixmap"_s, [this] { return QVariant::fromValue(face_.iconPixmap()); } },
        { u"ToolTip"_s,
            [this] {
                return QVariant::fromValue(ToolTip { {}, {}, face_.toolTip(), {} });
            } },
        { u"ItemIsMenu"_s, [this] { return QVariant(menuOwner_ == MenuOwner::Host); } },
        { u"Menu"_s,
            [] {
                return QVariant::fromValue(
                    QDBusObjectPath(QString::fromLatin1(DBusMenu::objectPath)));
            } },
    };
}

QDBusMessage StatusNotifierItem::reply(QDBusMessage const& call)
{
    if (auto const answer = propertyReply(call, itemInterface, properties()))
        return *answer;
    if (!call.interface().isEmpty() && call.interface() != itemInterface)
        return invalidCallReply(call);
    auto const method = call.member();
    auto const signature = call.signature();
    if (method == "Activate"_L1 && signature == "ii"_L1)
        return activateReply(call);
    if (method == "ContextMenu"_L1 && signature == "ii"_L1)
        return contextMenuReply(call);
    if (method == "SecondaryActivate"_L1 && signature == "ii"_L1)
        return call.createReply();
    if (method == "Scroll"_L1 && signature == "is"_L1)
        return call.createReply();
    if (method == "ProvideXdgActivationToken"_L1 && signature == "s"_L1) {
        noteActivationToken(call.arguments().at(0).toString());
        return call.createReply();
    }
    return invalidCallReply(call);
}

QDBusMessage StatusNotifierItem::activateReply(QDBusMessage const& call)
{
    // Hosts open the exported menu by themselves when there is nothing to activate.
    if (menuOwner_ == MenuOwner::Host)
        return invalidCallReply(call);
    callLater(face_.activate);
    return call.createReply();
}

QDBusMessage StatusNotifierItem::contextMenuReply(QDBusMessage const& call)
{
    // Hosts that can draw the exported menu do so instead of calling this (Plasma, waybar);
    // swaybar 1.7 draws none and calls this for either button.
    callLater(menuOwner_ == MenuOwner::Host ? face_.menuMissed : face_.activate);
    return call.createReply();
}

void StatusNotifierItem::callLater(std::function<void()> const& callback)
{
    QMetaObject::invokeMethod(this, callback, Qt::QueuedConnection);
}

void StatusNotifierItem::emitSignal(QString const& name)
{
    connection_.send(
        QDBusMessage::createSignal(QString::fromLatin1(objectPath), itemInterface, name));
}

} // namespace quillbar::platform
