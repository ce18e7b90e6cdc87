#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

namespace quillbar::platform {

/// A property that others may read. Its value is made only when it is read.
struct ReadableProperty {
    QString name;
    std::function<QVariant()> value;
};

/// Answers the calls of org.freedesktop.DBus.Properties for one interface; nothing when the message
/// is not such a call. Whatever the call asks for, the answer is a value or an error.
[[nodiscard]] std::optional<QDBusMessage> propertyReply(QDBusMessage const& call,
    QString const& interface, std::vector<ReadableProperty> const& properties);

/// Sends what `reply` answers to a method call, if an answer is wanted; false for another message.
bool answer(QDBusMessage const& message, QDBusConnection const& connection,
    std::function<QDBusMessage(QDBusMessage const& call)> const& reply);

/// The answer to a method that does not exist or was given other arguments than it takes.
[[nodiscard]] QDBusMessage invalidCallReply(QDBusMessage const& call);

} // namespace quillbar::platform
