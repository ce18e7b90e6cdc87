#include "platform/Notifications.h"

#include "platform/MainQueue.h"
#include "platform/linux/system/ApplicationId.h"
#include "platform/linux/system/SessionBus.h"

#include <QCoreApplication>
#include <QStringList>
#include <QThread>
#include <QVariantMap>

#include <memory>
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

enum class BodyText { Plain, Markup };

void send(Notification const& notification, BodyText bodyText)
{
    auto const body = QString::fromStdString(notification.body);
    auto call = serviceCall(QStringLiteral("Notify"));
    call.setArguments({ QStringLiteral("Quillbar"), QVariant::fromValue<uint>(0),
        QLatin1String(applicationId), QString::fromStdString(notification.title),
        bodyText == BodyText::Markup ? body.toHtmlEscaped() : body, QStringList {},
        hints(notification), -1 });
    callOnBus(call, serviceTimeout, [](QDBusMessage const&) {});
}

/// Which service was asked last what its bodies may hold. Main thread.
struct KnownService {
    QString owner;
    BodyText bodyText = BodyText::Plain;
};

KnownService& knownService()
{
    static KnownService service;
    return service;
}

void askAndSend(Notification notification)
{
    callOnBus(serviceCall(QStringLiteral("GetCapabilities")), serviceTimeout,
        [notification = std::move(notification)](QDBusMessage const& reply) {
            auto bodyText = BodyText::Plain;
            if (reply.type() == QDBusMessage::ReplyMessage) {
                auto const capabilities = reply.arguments().value(0).toStringList();
                if (capabilities.contains(QLatin1String("body-markup")))
                    bodyText = BodyText::Markup;
                knownService() = { reply.service(), bodyText };
            }
            send(notification, bodyText);
        });
}

void askForOwner(std::function<void(QString const& owner)> done)
{
    callOnBus(busCall(QStringLiteral("GetNameOwner"), { serviceName() }), busTimeout,
        [done = std::move(done)](QDBusMessage const& reply) {
            bool const isOwned = reply.type() == QDBusMessage::ReplyMessage;
            done(isOwned ? reply.arguments().value(0).toString() : QString());
        });
}

void showOnMainThread(Notification notification)
{
    // Asked each time instead of watched: a desktop that changes its service wakes nobody up.
    askForOwner([notification = std::move(notification)](QString const& owner) mutable {
        if (!owner.isEmpty() && owner == knownService().owner)
            send(notification, knownService().bodyText);
        else
            askAndSend(std::move(notification));
    });
}

void queryOnMainThread(std::function<void(NotificationAuthorization)> done)
{
    askForOwner([done = std::move(done)](QString const& owner) {
        if (!owner.isEmpty()) {
            done(NotificationAuthorization::Authorized);
            return;
        }
        callOnBus(busCall(QStringLiteral("ListActivatableNames")), busTimeout,
            [done](QDBusMessage const& reply) {
                bool const canStart
                    = reply.arguments().value(0).toStringList().contains(serviceName());
                done(canStart ? NotificationAuthorization::Authorized
                              : NotificationAuthorization::Denied);
            });
    });
}

bool isMainThread()
{
    auto const* const application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

void onMainThread(std::function<void()> work)
{
    if (isMainThread())
        work();
    else
        post(std::move(work));
}

} // namespace

void requestNotificationAuthorization(std::function<void()> done)
{
    // A desktop asks nobody; its own settings silence a program by its desktop entry.
    post(std::move(done));
}

void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done)
{
    onMainThread([done = std::move(done)] { queryOnMainThread(done); });
}

void postNotification(Notification notification)
{
    onMainThread([notification = std::move(notification)] { showOnMainThread(notification); });
}

} // namespace quillbar::platform
