#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QString>

namespace quillbar::testing {

/// One event of the menu's EventGroup call.
struct MenuEvent {
    int id = 0;
    QString name = QStringLiteral("clicked");
    QDBusVariant data { 0 };
    uint timestamp = 0;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, MenuEvent const& event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

inline QDBusArgument const& operator>>(QDBusArgument const& argument, MenuEvent& event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

} // namespace quillbar::testing
