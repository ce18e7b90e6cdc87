#include "platform/linux/tray/HostRegistration.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

auto const watcherName = u"org.kde.StatusNotifierWatcher"_s;
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
    if (connection_.isConnected())
        registerItem();
    else
        QMetaObject::invokeMethod(
            this, [this] { onHost_(TrayHost::Absent); }, Qt::QueuedConnection);
}

void HostRegistration::registerItem()
{
    auto call = QDBusMessage::createMethodCall(
        watcherName, u"/StatusNotifierWatcher"_s, watcherName, u"RegisterStatusNotifierItem"_s);
    call.setArguments({ connection_.baseService() });
    call.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerTimeout), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        QDBusPendingReply<> const reply = *pending;
        pending->deleteLater();
        onHost_(reply.isError() && isAbsence(reply.error()) ? TrayHost::Absent : TrayHost::Present);
    });
}

void HostRegistration::ownerChanged(QString const& newOwner)
{
    if (newOwner.isEmpty())
        onHost_(TrayHost::Absent);
    else
        registerItem();
}

} // namespace quillbar::platform
