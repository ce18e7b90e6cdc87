#include "platform/linux/tray/PropertyReply.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

QDBusMessage getReply(QDBusMessage const& call, std::vector<ReadableProperty> const& properties)
{
    auto const name = call.arguments().at(1).toString();
    auto const found = std::ranges::find(properties, name, &ReadableProperty::name);
    if (found == properties.end())
        return call.createErrorReply(QDBusError::UnknownProperty, "No such property: "_L1 + name);
    return call.createReply(QVariant::fromValue(QDBusVariant(found->value())));
}

QDBusMessage getAllReply(QDBusMessage const& call, std::vector<ReadableProperty> const& properties)
{
    QVariantMap values;
    for (auto const& property : properties)
        values.insert(property.name, property.value());
    return call.createReply(values);
}

} // namespace

std::optional<QDBusMessage> propertyReply(QDBusMessage const& call, QString const& interface,
    std::vector<ReadableProperty> const& properties)
{
    if (call.interface() != "org.freedesktop.DBus.Properties"_L1)
        return std::nullopt;
    auto const arguments = call.arguments();
    // An empty name of an interface asks for the property of whichever interface has it.
    auto const asked = arguments.isEmpty() ? QString() : arguments.first().toString();
    auto const method = call.member();
    auto const signature = call.signature();
    auto const isGet = method == "Get"_L1 && signature == "ss"_L1;
    auto const isGetAll = method == "GetAll"_L1 && signature == "s"_L1;
    auto const isSet = method == "Set"_L1 && signature == "ssv"_L1;
    if (!isGet && !isGetAll && !isSet)
        return invalidCallReply(call);
    if (!asked.isEmpty() && asked != interface)
        return call.createErrorReply(
            QDBusError::UnknownInterface, "No such interface: "_L1 + asked);
    if (isSet)
        return call.createErrorReply(
            QDBusError::PropertyReadOnly, u"All properties are read-only"_s);
    return isGet ? getReply(call, properties) : getAllReply(call, properties);
}

bool answer(QDBusMessage const& message, QDBusConnection const& connection,
    std::function<QDBusMessage(QDBusMessage const& call)> const& reply)
{
    if (message.type() != QDBusMessage::MethodCallMessage)
        return false;
    auto const answered = reply(message);
    if (message.isReplyRequired())
        connection.send(answered);
    return true;
}

QDBusMessage invalidCallReply(QDBusMessage const& call)
{
    return call.createErrorReply(QDBusError::UnknownMethod,
        "No such method: "_L1 + call.interface() + '.'_L1 + call.member() + '('_L1
            + call.signature() + ')'_L1);
}

} // namespace quillbar::platform
