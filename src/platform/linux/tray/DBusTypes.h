#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace quillbar::platform {

/// One size of an icon: pixels of alpha, red, green, blue in this order of bytes.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};

struct ToolTip {
    QString iconName;
    QList<IconPixmap> iconPixmap;
    QString title;
    QString text;
};

/// A menu row with its children, as deep as they were asked for.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

struct MenuRowProperties {
    int id = 0;
    QVariantMap properties;
};

struct MenuRowRemovals {
    int id = 0;
    QStringList names;
};

QDBusArgument& operator<<(QDBusArgument& argument, IconPixmap const& pixmap);
QDBusArgument const& operator>>(QDBusArgument const& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, ToolTip const& toolTip);
QDBusArgument const& operator>>(QDBusArgument const& argument, ToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, MenuLayout const& layout);
QDBusArgument const& operator>>(QDBusArgument const& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, MenuRowProperties const& row);
QDBusArgument const& operator>>(QDBusArgument const& argument, MenuRowProperties& row);
QDBusArgument& operator<<(QDBusArgument& argument, MenuRowRemovals const& row);
QDBusArgument const& operator>>(QDBusArgument const& argument, MenuRowRemovals& row);

/// Makes the types above known to Qt's D-Bus library; only the first call does anything.
void registerTrayTypes();

} // namespace quillbar::platform
