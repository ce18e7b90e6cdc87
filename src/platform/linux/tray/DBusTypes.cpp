#include "platform/linux/tray/DBusTypes.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMetaType>

namespace quillbar::platform {

QDBusArgument& operator<<(QDBusArgument& argument, IconPixmap const& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, IconPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, ToolTip const& toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, ToolTip& toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, MenuLayout const& layout)
{
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (auto const& child : layout.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, MenuLayout& layout)
{
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children << qdbus_cast<MenuLayout>(child.variant().value<QDBusArgument>());
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, MenuRowProperties const& row)
{
    argument.beginStructure();
    argument << row.id << row.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, MenuRowProperties& row)
{
    argument.beginStructure();
    argument >> row.id >> row.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, MenuRowRemovals const& row)
{
    argument.beginStructure();
    argument << row.id << row.names;
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, MenuRowRemovals& row)
{
    argument.beginStructure();
    argument >> row.id >> row.names;
    argument.endStructure();
    return argument;
}

void registerTrayTypes()
{
    [[maybe_unused]] static bool const once = [] {
        qDBusRegisterMetaType<IconPixmap>();
        qDBusRegisterMetaType<QList<IconPixmap>>();
        qDBusRegisterMetaType<ToolTip>();
        qDBusRegisterMetaType<MenuLayout>();
        qDBusRegisterMetaType<MenuRowProperties>();
        qDBusRegisterMetaType<QList<MenuRowProperties>>();
        qDBusRegisterMetaType<MenuRowRemovals>();
        qDBusRegisterMetaType<QList<MenuRowRemovals>>();
        qDBusRegisterMetaType<QList<QStringList>>();
        return true;
    }();
}

} // namespace quillbar::platform
