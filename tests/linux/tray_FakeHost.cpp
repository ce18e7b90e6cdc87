#include "linux/tray_FakeHost.h"

#include <QDBusVariant>

namespace quillbar::testing {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";
constexpr auto menuInterface = "com.canonical.dbusmenu";

} // namespace

FakeHost::FakeHost(PrivateBus const& bus)
    : connection_(bus.connect("host"))
{
    connection_.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents);
    for (auto const* interface : { itemInterface, menuInterface })
        connection_.connect({}, {}, interface, {}, this, SLOT(hear(QDBusMessage)));
    disconnectAfter(*this, connection_);
}

void FakeHost::becomeWatcher()
{
    connection_.registerService(watcherName);
}

void FakeHost::becomeCinnamon()
{
    connection_.unregisterService(watcherName);
    connection_.registerService("org.x.StatusNotifierWatcher");
    items.clear();
    becomeWatcher();
}

void FakeHost::setHasHost(bool hasHost)
{
    hasHost_ = hasHost;
    if (hasHost)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

QDBusMessage FakeHost::callItem(QString const& method, QVariantList const& arguments)
{
    return call(itemPath, itemInterface, method, arguments);
}

QDBusMessage FakeHost::callMenu(QString const& method, QVariantList const& arguments)
{
    return call("/MenuBar", menuInterface, method, arguments);
}

QVariant FakeHost::property(QString const& name)
{
    auto const reply
        = call(itemPath, "org.freedesktop.DBus.Properties", "Get", { itemInterface, name });
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QDBusMessage FakeHost::call(QString const& path, QString const& interface, QString const& method,
    QVariantList const& arguments)
{
    auto message = QDBusMessage::createMethodCall(items.value(0), path, interface, method);
    message.setArguments(arguments);
    return ask(connection_, message);
}

} // namespace quillbar::testing
