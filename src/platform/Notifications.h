#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quillbar::platform {

enum class NotificationAuthorization : std::uint8_t {
    NotDetermined,
    Denied,
    Authorized,
    Provisional
};
enum class NotificationSound : std::uint8_t { None, Default };
/// Whether the notification stays in the system's list of notifications, where there is one.
enum class NotificationLife : std::uint8_t { Passing, Kept };

/// Plain text throughout; the backend escapes it where the system renders markup.
struct Notification {
    std::string identifier;
    std::string title;
    std::string body;
    NotificationSound sound = NotificationSound::None;
    NotificationLife life = NotificationLife::Passing;
    /// Opened, as by openAddress(), when the person clicks the notification; empty for none.
    std::string address = {};
};

/// Asks the person for the right to show notifications. `done` is called once, whatever the answer.
/// Callbacks of this header may come on any thread, also from within the call.
void requestNotificationAuthorization(std::function<void()> done);

/// Tells `done` once whether notifications may be shown now.
void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done);

/// Shows the notification at once and reports nothing. Never blocks. Any thread.
void postNotification(Notification notification);

} // namespace quillbar::platform
