#include "platform/linux/desktop/NotificationClicks.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/AddressOpener.h"

#include <QCoreApplication>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

NotificationClicks& NotificationClicks::instance()
{
    static auto* const clicks = new NotificationClicks;
    return *clicks;
}

NotificationClicks::NotificationClicks()
    : QObject(QCoreApplication::instance())
{
    onSessionBus(this, [this](QDBusConnection bus) {
        // A bus that was started again gives the same names to others.
        addresses_.clear();
        auto const listen = [&](QString const& signal, char const* slot) {
            // Naming the sender would make Qt wait for the bus to tell its owner.
            bus.connect(QString(), u"/org/freedesktop/Notifications"_s,
                u"org.freedesktop.Notifications"_s, signal, this, slot);
        };
        listen(u"ActivationToken"_s, SLOT(tokenGiven(QDBusMessage)));
        listen(u"ActionInvoked"_s, SLOT(actionInvoked(QDBusMessage)));
        listen(u"NotificationClosed"_s, SLOT(closed(QDBusMessage)));
    });
}

NotificationClicks::Key NotificationClicks::keyOf(QDBusMessage const& message)
{
    return { message.service(), message.arguments().value(0).toUInt() };
}

void NotificationClicks::openOnClick(QDBusMessage const& shown, std::string const& address)
{
    addresses_[keyOf(shown)] = address;
}

// Comes before the action that it is for.
void NotificationClicks::tokenGiven(QDBusMessage const& signal)
{
    if (addresses_.contains(keyOf(signal)))
        activationToken_ = signal.arguments().value(1).toString().toStdString();
}

void NotificationClicks::actionInvoked(QDBusMessage const& signal)
{
    if (auto const found = addresses_.find(keyOf(signal)); found != addresses_.end())
        openAddress(found->second, std::exchange(activationToken_, {}));
}

void NotificationClicks::closed(QDBusMessage const& signal)
{
    addresses_.erase(keyOf(signal));
}

} // namespace quillbar::platform
