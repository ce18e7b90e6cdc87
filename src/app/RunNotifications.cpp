#include "app/RunNotifications.h"

#include "app/Uuid.h"
#include "platform/Notifications.h"
#include "platform/Text.h"

#include <string_view>
#include <utility>

namespace quillbar {

using platform::Notification;
using platform::NotificationAuthorization;
using platform::NotificationLife;
using platform::NotificationSound;

namespace {

std::string percentEncoded(std::string_view text)
{
    constexpr std::string_view unreserved
        = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (auto const character : text) {
        if (unreserved.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        auto const byte = static_cast<unsigned char>(character);
        encoded += { '%', digits[byte / 16], digits[byte % 16] };
    }
    return encoded;
}

Notification makeNotification(std::string body, NotificationSound sound)
{
    // Only a failure is kept in the system's list of notifications.
    auto const life
        = sound == NotificationSound::None ? NotificationLife::Passing : NotificationLife::Kept;
    return { .identifier = randomUuid(),
        .title = "Quillbar",
        .body = std::move(body),
        .sound = sound,
        .life = life };
}

/// The answers may come on any thread, so they hold nothing but the notification.
void presentIfAllowed(Notification notification)
{
    platform::queryNotificationAuthorization(
        [notification = std::move(notification)](NotificationAuthorization authorization) {
            if (authorization == NotificationAuthorization::Authorized
                || authorization == NotificationAuthorization::Provisional)
                platform::postNotification(notification);
        });
}

} // namespace

void RunNotifications::notifyRunSuccess(std::string const& name) const
{
    presentIfAllowed(
        makeNotification("Launched “" + platform::isolated(name) + "”", NotificationSound::None));
}

void RunNotifications::notifyRunFailed(std::string const& name)
{
    auto notification = makeNotification(
        "“" + platform::isolated(name) + "” couldn’t run. Check that it still exists in Shortcuts.",
        NotificationSound::Default);
    notification.address = "shortcuts://open-shortcut?name=" + percentEncoded(name);
    if (std::exchange(didRequestNotifAuth_, true))
        return presentIfAllowed(std::move(notification));
    platform::requestNotificationAuthorization(
        [notification = std::move(notification)] { presentIfAllowed(notification); });
}

} // namespace quillbar
