#include "platform/linux/tray/DBusMenu.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/input/UserAction.h"

#include <QDBusError>
#include <QDBusMetaType>
#include <QGuiApplication>
#include <QSet>

#include <set>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

DBusMenu::DBusMenu()
{
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuRowProperties>();
    qDBusRegisterMetaType<QList<MenuRowProperties>>();
    qDBusRegisterMetaType<MenuRowRemovals>();
    qDBusRegisterMetaType<QList<MenuRowRemovals>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<QStringList>>();
    onSessionBus(this, [this](QDBusConnection bus) {
        bus.registerObject(
            QString::fromLatin1(objectPath), this, QDBusConnection::ExportAllContents);
    });
}

void DBusMenu::setMenu(std::shared_ptr<Menu const> menu)
{
    auto const changes = export_.setMenu(std::move(menu));
    if (!changes)
        return;
    if (!changes->updated.isEmpty())
        Q_EMIT ItemsPropertiesUpdated(changes->updated, changes->removed);
    Q_EMIT LayoutUpdated(export_.revision(), MenuExport::rootId);
}

uint DBusMenu::GetLayout(int parentId, int depth, QStringList const& names, MenuLayout& layout)
{
    if (auto const* row = rowOrError(parentId))
        layout = layoutOf(*row, depth, names);
    return export_.revision();
}

QList<MenuRowProperties> DBusMenu::GetGroupProperties(
    QList<int> const& ids, QStringList const& names)
{
    // Each row once, however often it is asked for: an answer beyond 128 MiB ends the connection.
    QSet<int> const asked(ids.begin(), ids.end());
    QList<MenuRowProperties> rows;
    for (auto const& [id, row] : export_.rows()) {
        if (asked.isEmpty() || asked.contains(id))
            rows << MenuRowProperties { id, export_.properties(row, names) };
    }
    return rows;
}

QDBusVariant DBusMenu::GetProperty(int id, QString const& name)
{
    static QVariantMap const defaults { { u"type"_s, u"standard"_s }, { u"label"_s, QString() },
        { u"enabled"_s, true }, { u"visible"_s, true } };
    auto const* row = rowOrError(id);
    if (row == nullptr)
        return {};
    auto const value = export_.properties(*row, { name }).value(name, defaults.value(name));
    if (!value.isValid())
        sendErrorReply(QDBusError::UnknownProperty, "No such property: "_L1 + name);
    return QDBusVariant(value);
}

void DBusMenu::Event(int id, QString const& name, QDBusVariant const& /*data*/, uint timestamp)
{
    if (auto const* row = rowOrError(id))
        handleEvent(*row, name, timestamp);
}

QList<int> DBusMenu::EventGroup(QList<MenuEvent> const& events)
{
    std::set<std::pair<int, QString>> handled;
    QSet<int> knownIds;
    QSet<int> unknownIds;
    for (auto const& event : events) {
        if (!handled.emplace(event.id, event.name).second)
            continue;
        auto const* row = export_.row(event.id);
        (row ? knownIds : unknownIds) << event.id;
        if (row != nullptr)
            handleEvent(*row, event.name, event.timestamp);
    }
    if (knownIds.isEmpty() && !unknownIds.isEmpty())
        sendUnknownRow();
    return unknownIds.values();
}

bool DBusMenu::AboutToShow(int id)
{
    if (rowOrError(id) != nullptr)
        opened(id);
    return false;
}

QList<int> DBusMenu::AboutToShowGroup(QList<int> const& ids, QList<int>& unknownIds)
{
    QSet<int> const asked(ids.begin(), ids.end());
    for (auto const id : asked) {
        if (export_.row(id) == nullptr)
            unknownIds << id;
        else
            opened(id);
    }
    if (!asked.isEmpty() && unknownIds.size() == asked.size())
        sendUnknownRow();
    return {};
}

QString DBusMenu::textDirection()
{
    return QGuiApplication::isRightToLeft() ? u"rtl"_s : u"ltr"_s;
}

MenuExport::Row const* DBusMenu::rowOrError(int id)
{
    auto const* row = export_.row(id);
    if (row == nullptr)
        sendUnknownRow();
    return row;
}

void DBusMenu::sendUnknownRow()
{
    sendErrorReply(QDBusError::InvalidArgs, u"The menu has no such item"_s);
}

MenuLayout DBusMenu::layoutOf(MenuExport::Row const& row, int depth, QStringList const& names)
{
    MenuLayout layout { row.id, export_.properties(row, names), {} };
    if (depth == 0)
        return layout;
    // Any depth below zero asks for everything.
    auto const depthLeft = depth < 0 ? depth : depth - 1;
    for (auto const id : row.children)
        layout.children << QVariant::fromValue(layoutOf(*export_.row(id), depthLeft, names));
    return layout;
}

void DBusMenu::handleEvent(MenuExport::Row const& row, QString const& name, uint timestamp)
{
    if (name == "opened"_L1)
        opened(row.id);
    if (name != "clicked"_L1 || row.item == nullptr)
        return;
    noteUserAction(timestamp != 0 ? timestamp : lastUserAction().time);
    // The host gets its answer first, and the item is a copy: the action may replace the menu.
    QMetaObject::invokeMethod(
        this, [item = *row.item] { performAction(item); }, Qt::QueuedConnection);
}

void DBusMenu::opened(int id)
{
    // The host gets its answer first.
    if (id == MenuExport::rootId && onOpen)
        QMetaObject::invokeMethod(this, onOpen, Qt::QueuedConnection);
}

} // namespace quillbar::platform
