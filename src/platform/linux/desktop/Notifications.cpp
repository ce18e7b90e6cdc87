#include "platform/Notifications.h"

#include "platform/MainQueue.h"
#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/desktop/NotificationClicks.h"

#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::chrono::milliseconds busTimeout { 2000 };
// Longer, as the call may have to start the service first.
constexpr std::chrono::milliseconds serviceTimeout { 10000 };

QString serviceName()
{
    return QStringLiteral("org.freedesktop.Notifications");
}

QDBusMessage serviceCall(QString const& method)
{
    return QDBusMessage::createMethodCall(
        serviceName(), QStringLiteral("/org/freedesktop/Notifications"), serviceName(), method);
}

QVariantMap hints(Notification const& notification)
{
    QVariantMap values { { QStringLiteral("desktop-entry"), QLatin1String(applicationId) },
        // Normal: the lowest shows no banner on some desktops, the highest never goes away.
        { QStringLiteral("urgency"), QVariant::fromValue<uchar>(1) } };
    if (notification.sound == NotificationSound::None)
        values.insert(QStringLiteral("suppress-sound"), true);
    else
        values.insert(QStringLiteral("sound-name"), QStringLiteral("dialog-error"));
    if (notification.life == NotificationLife::Passing)
        values.insert(QStringLiteral("transient"), true);
    return values;
}

void send(Notification const& notification, QString const& body, QStringList const& actions)
{
    auto call = serviceCall(QStringLiteral("Notify"));
    call.setArguments(
        { QStringLiteral("Quillbar"), QVariant::fromValue<uint>(0), QLatin1String(applicationId),
            QString::fromStdString(notification.title), body, actions, hints(notification), -1 });
    callOnBus(call, serviceTimeout, [address = notification.address](QDBusMessage const& reply) {
        if (!address.empty() && reply.type() == QDBusMessage::ReplyMessage)
            NotificationClicks::instance().openOnClick(reply, address);
    });
}

/// Asks each time, as another service may have taken over.
void askAndSend(Notification const& notification)
{
    callOnBus(serviceCall(QStringLiteral("GetCapabilities")), serviceTimeout,
        [notification](QDBusMessage const& reply) {
            auto const capabilities = reply.arguments().value(0).toStringList();
            // A service that does not answer may still take the text for markup later.
            auto const isPlain = reply.type() == QDBusMessage::ReplyMessage
                && !capabilities.contains(QLatin1String("body-markup"));
            auto const body = QString::fromStdString(notification.body);
            QStringList actions;
            // The action of a click. Xfce's service shows a button for it if it has a name.
            if (!notification.address.empty() && capabilities.contains(QLatin1String("actions")))
                actions = { QStringLiteral("default"), QStringLiteral("Open") };
            send(notification, isPlain ? body : body.toHtmlEscaped(), actions);
        });
}

void queryOnMainThread(std::function<void(NotificationAuthorization)> const& done)
{
    auto const afterOwner = [done](QDBusMessage const& owner) {
        if (owner.type() == QDBusMessage::ReplyMessage)
            return done(NotificationAuthorization::Authorized);
        callOnBus(busCall(QStringLiteral("ListActivatableNames")), busTimeout,
            [done](QDBusMessage const& reply) {
                auto const names = reply.arguments().value(0).toStringList();
                done(names.contains(serviceName()) ? NotificationAuthorization::Authorized
                                                   : NotificationAuthorization::Denied);
            });
    };
    callOnBus(busCall(QStringLiteral("GetNameOwner"), { serviceName() }), busTimeout, afterOwner);
}

} // namespace

void requestNotificationAuthorization(std::function<void()> done)
{
    // A desktop asks nobody; its own settings silence a program by its desktop entry.
    post(std::move(done));
}

void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done)
{
    post([done = std::move(done)] { queryOnMainThread(done); });
}

void postNotification(Notification notification)
{
    post([notification = std::move(notification)] { askAndSend(notification); });
}

} // namespace quillbar::platform
