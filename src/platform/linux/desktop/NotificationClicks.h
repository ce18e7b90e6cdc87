#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <map>
#include <string>
#include <utility>

namespace quillbar::platform {

/// Opens the addresses of the notifications that are clicked. One for the process, which lives as
/// long as the application object. Main thread.
class NotificationClicks : public QObject {
    Q_OBJECT

public:
    [[nodiscard]] static NotificationClicks& instance();

    /// `shown` is the service's reply to Notify. The address is kept until the notification closes.
    void openOnClick(QDBusMessage const& shown, std::string const& address);

private:
    /// The service's unique name and its number for the notification.
    using Key = std::pair<QString, uint>;

    NotificationClicks();

    [[nodiscard]] static Key keyOf(QDBusMessage const& message);
    Q_SLOT void tokenGiven(QDBusMessage const& signal);
    Q_SLOT void actionInvoked(QDBusMessage const& signal);
    Q_SLOT void closed(QDBusMessage const& signal);

    std::map<Key, std::string> addresses_;
    std::string activationToken_;
};

} // namespace quillbar::platform
