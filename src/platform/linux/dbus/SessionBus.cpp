#include "platform/linux/dbus/SessionBus.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

SessionBus& SessionBus::own()
{
    // Qt's, as Qt makes it for itself in any case.
    static auto* const bus
        = new SessionBus(QDBusConnection::sessionBus(), QCoreApplication::instance());
    return *bus;
}

SessionBus::SessionBus(QDBusConnection const& connection, QObject* parent)
    : QObject(parent)
    , connection_(connection)
{
    watch();
}

void SessionBus::watch()
{
    connection_.connect(QString(), u"/org/freedesktop/DBus/Local"_s,
        u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this, SLOT(joinAgain()));
}

void SessionBus::joinAgain()
{
    // Qt goes on using its own, and never makes it a second time.
    if (connection_.name() != QDBusConnection::sessionBus().name())
        QDBusConnection::disconnectFromBus(connection_.name());
    static int count = 0;
    connection_ = QDBusConnection::connectToBus(
        QDBusConnection::SessionBus, "quillbar"_L1 + QString::number(++count));
    if (!connection_.isConnected())
        return;
    watch();
    Q_EMIT joined(connection_);
}

QDBusConnection sessionBus()
{
    return SessionBus::own().connection();
}

void onSessionBus(QObject* member, std::function<void(QDBusConnection bus)> const& registerOn)
{
    registerOn(sessionBus());
    QObject::connect(&SessionBus::own(), &SessionBus::joined, member, registerOn);
}

QDBusMessage busCall(QString const& method, QVariantList const& arguments)
{
    auto call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
    call.setArguments(arguments);
    return call;
}

void callOnBus(QDBusMessage const& call, std::chrono::milliseconds timeout,
    std::function<void(QDBusMessage const& reply)> done, QDBusConnection const& bus)
{
    // A call that was never sent would never be reported as finished.
    auto const pending = bus.isConnected()
        ? bus.asyncCall(call, static_cast<int>(timeout.count()))
        : QDBusPendingCall::fromError({ QDBusError::Disconnected, u"no session bus"_s });
    auto* const watcher = new QDBusPendingCallWatcher(pending, QCoreApplication::instance());
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, done = std::move(done)] {
            watcher->deleteLater();
            done(watcher->reply());
        });
}

} // namespace quillbar::platform
