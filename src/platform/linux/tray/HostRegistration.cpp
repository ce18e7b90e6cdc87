#include "platform/linux/tray/HostRegistration.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

auto const watcherName = u"org.kde.StatusNotifierWatcher"_s;
auto const cinnamonName = u"org.x.StatusNotifierWatcher"_s;
auto const watcherPath = u"/StatusNotifierWatcher"_s;
constexpr int answerTimeout = 5000;

bool isAbsence(QDBusError const& error)
{
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected
        || error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1;
}

} // namespace

HostRegistration::HostRegistration(QDBusConnection connection, std::function<void(TrayHost)> onHost)
    : connection_(std::move(connection))
    , onHost_(std::move(onHost))
    , watcher_(watcherName, connection_, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](
            QString const&, QString const&, QString const& newOwner) { ownerChanged(newOwner); });
    // Naming the sender would make Qt wait for the bus to tell its owner.
    for (auto const& signal :
        { u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s })
        connection_.connect(
            QString(), watcherPath, watcherName, signal, this, SLOT(hostsChanged()));
    if (connection_.isConnected())
        askWhoseWatcher();
    else
        QMetaObject::invokeMethod(
            this, [this] { onHost_(TrayHost::Absent); }, Qt::QueuedConnection);
}

// A watcher reads the icon's name as soon as the item is registered.
void HostRegistration::askWhoseWatcher()
{
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s,
        u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    call.setArguments({ cinnamonName });
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerTimeout), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        QDBusPendingReply<bool> const reply = *pending;
        pending->deleteLater();
        showsSymbolicIcons_ = reply.isError() || !reply.value();
        registerItem();
    });
}

void HostRegistration::registerItem()
{
    auto call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, watcherName, u"RegisterStatusNotifierItem"_s);
    call.setArguments({ connection_.baseService() });
    call.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerTimeout), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        QDBusPendingReply<> const reply = *pending;
        pending->deleteLater();
        if (reply.isError() && isAbsence(reply.error()))
            onHost_(TrayHost::Absent);
        else
            askForHost();
    });
}

// A watcher may run without any panel. One that does not answer this counts as one that has one.
void HostRegistration::askForHost()
{
    auto call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setArguments({ watcherName, u"IsStatusNotifierHostRegistered"_s });
    call.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerTimeout), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        QDBusPendingReply<QDBusVariant> const reply = *pending;
        pending->deleteLater();
        bool const isWithout = reply.isError() ? isAbsence(reply.error())
                                               : reply.value().variant() == QVariant(false);
        onHost_(isWithout ? TrayHost::Absent : TrayHost::Present);
    });
}

void HostRegistration::hostsChanged()
{
    askForHost();
}

void HostRegistration::ownerChanged(QString const& newOwner)
{
    if (newOwner.isEmpty())
        onHost_(TrayHost::Absent);
    else
        askWhoseWatcher();
}

} // namespace quillbar::platform
