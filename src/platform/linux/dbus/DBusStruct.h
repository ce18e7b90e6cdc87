#pragma once

#include <QDBusArgument>

#include <tuple>

namespace quillbar::platform {

/// A type that travels as a struct: T::fields(value) ties its fields in the order of the signature.
template <class T>
concept DBusStruct = requires(T& value)
{
    T::fields(value);
};

template <DBusStruct T> QDBusArgument& operator<<(QDBusArgument& argument, T const& value)
{
    argument.beginStructure();
    std::apply([&argument](auto&... field) { (argument << ... << field); }, T::fields(value));
    argument.endStructure();
    return argument;
}

template <DBusStruct T> QDBusArgument const& operator>>(QDBusArgument const& argument, T& value)
{
    argument.beginStructure();
    std::apply([&argument](auto&... field) { (argument >> ... >> field); }, T::fields(value));
    argument.endStructure();
    return argument;
}

} // namespace quillbar::platform
