#include "platform/linux/tray/HostRegistration.h"

#include "platform/linux/dbus/SessionBus.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QPointer>

#include <chrono>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

auto const watcherName = u"org.kde.StatusNotifierWatcher"_s;
auto const cinnamonName = u"org.x.StatusNotifierWatcher"_s;
auto const watcherPath = u"/StatusNotifierWatcher"_s;
constexpr std::chrono::seconds answerTimeout { 5 };

bool isAbsence(QDBusMessage const& reply)
{
    QDBusError const error(reply);
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected
        || error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1;
}

} // namespace

HostRegistration::HostRegistration(std::function<void(TrayHost)> onHost)
    : onHost_(std::move(onHost))
    , watcher_(watcherName, sessionBus(), QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](
            QString const&, QString const&, QString const& newOwner) { ownerChanged(newOwner); });
    onSessionBus(this, [this](QDBusConnection bus) {
        watcher_.setConnection(bus);
        // Naming the sender would make Qt wait for the bus to tell its owner.
        for (auto const& signal :
            { u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s })
            bus.connect(QString(), watcherPath, watcherName, signal, this, SLOT(askForHost()));
        registerItem();
    });
}

void HostRegistration::call(
    QDBusMessage message, void (HostRegistration::*answered)(QDBusMessage const& reply))
{
    message.setAutoStartService(false);
    callOnBus(message, answerTimeout, [self = QPointer(this), answered](QDBusMessage const& reply) {
        if (self)
            (*self.*answered)(reply);
    });
}

// A watcher reads the icon's name as soon as the item is registered, but the bus answers the first
// call before it passes on the second.
void HostRegistration::registerItem()
{
    call(busCall(u"NameHasOwner"_s, { cinnamonName }), &HostRegistration::cinnamonAnswered);
    auto registration = QDBusMessage::createMethodCall(
        watcherName, watcherPath, watcherName, u"RegisterStatusNotifierItem"_s);
    registration.setArguments({ sessionBus().baseService() });
    call(registration, &HostRegistration::registered);
}

void HostRegistration::cinnamonAnswered(QDBusMessage const& reply)
{
    showsSymbolicIcons_ = reply.arguments().value(0) != QVariant(true);
}

void HostRegistration::registered(QDBusMessage const& reply)
{
    if (isAbsence(reply))
        onHost_(TrayHost::Absent);
    else
        askForHost();
}

void HostRegistration::askForHost()
{
    auto property = QDBusMessage::createMethodCall(
        watcherName, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    property.setArguments({ watcherName, u"IsStatusNotifierHostRegistered"_s });
    call(property, &HostRegistration::hostAnswered);
}

// A watcher may run without any panel. One that does not answer this counts as one that has one.
void HostRegistration::hostAnswered(QDBusMessage const& reply)
{
    auto const hasHost = reply.arguments().value(0).value<QDBusVariant>().variant();
    onHost_(isAbsence(reply) || hasHost == QVariant(false) ? TrayHost::Absent : TrayHost::Present);
}

void HostRegistration::ownerChanged(QString const& newOwner)
{
    if (newOwner.isEmpty())
        onHost_(TrayHost::Absent);
    else
        registerItem();
}

} // namespace quillbar::platform
