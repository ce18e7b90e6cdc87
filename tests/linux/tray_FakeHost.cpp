#include "linux/tray_FakeHost.h"

#include <array>

namespace quillbar::testing {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto cinnamonName = "org.x.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr std::array heard { "org.kde.StatusNotifierItem", "com.canonical.dbusmenu" };

} // namespace

FakeHost::FakeHost(PrivateBus const& bus, QString const& name)
    : connection_(bus.connect(name))
{
    connection_.registerVirtualObject(watcherPath, this);
    for (auto const* interface : heard)
        connection_.connect({}, {}, interface, {}, this, SLOT(hear(QDBusMessage)));
    disconnectAfter(*this, connection_);
}

void FakeHost::becomeWatcher()
{
    connection_.registerService(watcherName);
}

void FakeHost::becomeCinnamon()
{
    connection_.registerService(cinnamonName);
}

void FakeHost::resign()
{
    connection_.unregisterService(watcherName);
    connection_.unregisterService(cinnamonName);
}

void FakeHost::setHasHost(bool hasHost)
{
    hasHost_ = hasHost;
    connection_.send(QDBusMessage::createSignal(watcherPath, watcherName,
        hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered"));
}

QDBusMessage FakeHost::callItem(QString const& method, QVariantList const& arguments)
{
    return call("/StatusNotifierItem", "org.kde.StatusNotifierItem", method, arguments);
}

QDBusMessage FakeHost::callMenu(QString const& method, QVariantList const& arguments)
{
    return call("/MenuBar", "com.canonical.dbusmenu", method, arguments);
}

QVariant FakeHost::property(QString const& name)
{
    auto const reply = call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
        { "org.kde.StatusNotifierItem", name });
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

bool FakeHost::handleMessage(QDBusMessage const& message, QDBusConnection const& connection)
{
    if (message.member() == "Get") {
        connection.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost_))));
        return true;
    }
    if (message.member() != "RegisterStatusNotifierItem")
        return false;
    items << message.arguments().value(0).toString();
    connection.send(message.createReply());
    return true;
}

QString FakeHost::introspect(QString const& /*path*/) const
{
    return {};
}

void FakeHost::hear(QDBusMessage const& signal)
{
    signalNames << signal.member();
}

QDBusMessage FakeHost::call(QString const& path, QString const& interface, QString const& method,
    QVariantList const& arguments)
{
    auto message = QDBusMessage::createMethodCall(items.value(0), path, interface, method);
    message.setArguments(arguments);
    return ask(connection_, message);
}

} // namespace quillbar::testing
