#include "platform/linux/tray/DBusMenu.h"

#include "platform/linux/UserAction.h"
#include "platform/linux/tray/PropertyReply.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

auto const menuInterface = u"com.canonical.dbusmenu"_s;

QDBusMessage unknownRowReply(QDBusMessage const& call)
{
    return call.createErrorReply(QDBusError::InvalidArgs, u"The menu has no such item"_s);
}

std::vector<ReadableProperty> readableProperties()
{
    return {
        { u"Version"_s, [] { return QVariant::fromValue(3U); } },
        { u"Status"_s, [] { return QVariant(u"normal"_s); } },
        { u"TextDirection"_s,
            [] { return QVariant(QGuiApplication::isRightToLeft() ? u"rtl"_s : u"ltr"_s); } },
        { u"IconThemePath"_s, [] { return QVariant(QStringList()); } },
    };
}

QVariant defaultProperty(QString const& name)
{
    if (name == "type"_L1)
        return u"standard"_s;
    if (name == "label"_L1)
        return QString();
    if (name == "enabled"_L1 || name == "visible"_L1)
        return true;
    return {};
}

} // namespace

DBusMenu::DBusMenu(QDBusConnection connection)
    : connection_(std::move(connection))
{
    registerTrayTypes();
    connection_.registerVirtualObject(QString::fromLatin1(objectPath), this);
}

DBusMenu::~DBusMenu()
{
    connection_.unregisterObject(QString::fromLatin1(objectPath));
}

void DBusMenu::setMenu(std::shared_ptr<Menu const> menu)
{
    std::vector<ChangedRow> changed;
    if (export_.setMenu(std::move(menu), changed) == MenuExport::Change::None)
        return;
    if (!changed.empty())
        emitPropertiesUpdated(changed);
    emitSignal(u"LayoutUpdated"_s, { export_.revision(), MenuExport::rootId });
}

bool DBusMenu::handleMessage(QDBusMessage const& message, QDBusConnection const& connection)
{
    return answer(message, connection, [this](auto const& call) { return reply(call); });
}

QString DBusMenu::introspect(QString const& /*path*/) const
{
    return uR"xml(<interface name="com.canonical.dbusmenu">
<property name="Version" type="u" access="read"/>
<property name="TextDirection" type="s" access="read"/>
<property name="Status" type="s" access="read"/>
<property name="IconThemePath" type="as" access="read"/>
<method name="GetLayout"><arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/><arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/></method>
<method name="GetGroupProperties"><arg type="ai" direction="in"/><arg type="as" direction="in"/><arg type="a(ia{sv})" direction="out"/></method>
<method name="GetProperty"><arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<method name="Event"><arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/><arg type="u" direction="in"/></method>
<method name="EventGroup"><arg type="a(isvu)" direction="in"/><arg type="ai" direction="out"/></method>
<method name="AboutToShow"><arg type="i" direction="in"/><arg type="b" direction="out"/></method>
<method name="AboutToShowGroup"><arg type="ai" direction="in"/><arg type="ai" direction="out"/><arg type="ai" direction="out"/></method>
<signal name="ItemsPropertiesUpdated"><arg type="a(ia{sv})"/><arg type="a(ias)"/></signal>
<signal name="LayoutUpdated"><arg type="u"/><arg type="i"/></signal>
<signal name="ItemActivationRequested"><arg type="i"/><arg type="u"/></signal>
</interface>
)xml"_s;
}

QDBusMessage DBusMenu::reply(QDBusMessage const& call)
{
    using Method = QDBusMessage (DBusMenu::*)(QDBusMessage const&);
    struct Entry {
        QLatin1StringView name;
        QLatin1StringView signature;
        Method method;
    };
    static constexpr Entry entries[] = {
        { "GetLayout"_L1, "iias"_L1, &DBusMenu::layoutReply },
        { "GetGroupProperties"_L1, "aias"_L1, &DBusMenu::groupPropertiesReply },
        { "GetProperty"_L1, "is"_L1, &DBusMenu::propertyOfRowReply },
        { "Event"_L1, "isvu"_L1, &DBusMenu::eventReply },
        { "EventGroup"_L1, "a(isvu)"_L1, &DBusMenu::eventGroupReply },
        { "AboutToShow"_L1, "i"_L1, &DBusMenu::aboutToShowReply },
        { "AboutToShowGroup"_L1, "ai"_L1, &DBusMenu::aboutToShowGroupReply },
    };
    if (auto const answer = propertyReply(call, menuInterface, readableProperties()))
        return *answer;
    // A call may leave the interface out.
    if (call.interface().isEmpty() || call.interface() == menuInterface) {
        for (auto const& entry : entries) {
            if (call.member() == entry.name && call.signature() == entry.signature)
                return (this->*entry.method)(call);
        }
    }
    return invalidCallReply(call);
}

QDBusMessage DBusMenu::layoutReply(QDBusMessage const& call)
{
    auto const arguments = call.arguments();
    auto const* row = export_.row(arguments.at(0).toInt());
    if (row == nullptr)
        return unknownRowReply(call);
    auto const answer = layout(*row, arguments.at(1).toInt(), arguments.at(2).toStringList());
    return call.createReply({ export_.revision(), QVariant::fromValue(answer) });
}

QDBusMessage DBusMenu::groupPropertiesReply(QDBusMessage const& call)
{
    auto const arguments = call.arguments();
    auto const asked = qdbus_cast<QList<int>>(arguments.at(0));
    auto const names = arguments.at(1).toStringList();
    auto const ids = asked.isEmpty() ? export_.ids() : std::vector<int>(asked.begin(), asked.end());
    QList<MenuRowProperties> rows;
    for (auto const id : ids) {
        if (auto const* row = export_.row(id))
            rows << MenuRowProperties { id, export_.properties(*row, names) };
    }
    return call.createReply(QVariant::fromValue(rows));
}

QDBusMessage DBusMenu::propertyOfRowReply(QDBusMessage const& call)
{
    auto const arguments = call.arguments();
    auto const* row = export_.row(arguments.at(0).toInt());
    if (row == nullptr)
        return unknownRowReply(call);
    auto const name = arguments.at(1).toString();
    auto const value = export_.properties(*row, { name }).value(name, defaultProperty(name));
    if (!value.isValid())
        return call.createErrorReply(QDBusError::UnknownProperty, "No such property: "_L1 + name);
    return call.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage DBusMenu::eventReply(QDBusMessage const& call)
{
    auto const arguments = call.arguments();
    auto const recognition = handleEvent(
        arguments.at(0).toInt(), arguments.at(1).toString(), arguments.at(3).toUInt());
    return recognition == Recognition::Known ? call.createReply() : unknownRowReply(call);
}

QDBusMessage DBusMenu::eventGroupReply(QDBusMessage const& call)
{
    auto const events = call.arguments().at(0).value<QDBusArgument>();
    QList<int> unknown;
    auto hasKnown = false;
    events.beginArray();
    while (!events.atEnd()) {
        int id = 0;
        QString event;
        QDBusVariant data;
        uint timestamp = 0;
        events.beginStructure();
        events >> id >> event >> data >> timestamp;
        events.endStructure();
        if (handleEvent(id, event, timestamp) == Recognition::Known)
            hasKnown = true;
        else
            unknown << id;
    }
    events.endArray();
    if (!hasKnown && !unknown.isEmpty())
        return unknownRowReply(call);
    return call.createReply(QVariant::fromValue(unknown));
}

QDBusMessage DBusMenu::aboutToShowReply(QDBusMessage const& call)
{
    auto const id = call.arguments().at(0).toInt();
    if (export_.row(id) == nullptr)
        return unknownRowReply(call);
    opened(id);
    return call.createReply(false);
}

QDBusMessage DBusMenu::aboutToShowGroupReply(QDBusMessage const& call)
{
    QList<int> unknown;
    auto const ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    for (auto const id : ids) {
        if (export_.row(id) == nullptr)
            unknown << id;
        else
            opened(id);
    }
    if (!ids.isEmpty() && unknown.size() == ids.size())
        return unknownRowReply(call);
    return call.createReply({ QVariant::fromValue(QList<int>()), QVariant::fromValue(unknown) });
}

MenuLayout DBusMenu::layout(MenuExport::Row const& row, int depth, QStringList const& names)
{
    MenuLayout result { row.id, export_.properties(row, names), {} };
    if (depth == 0)
        return result;
    result.children.reserve(static_cast<qsizetype>(row.children.size()));
    // Any depth below zero asks for everything.
    auto const depthLeft = depth < 0 ? depth : depth - 1;
    for (auto const id : row.children)
        result.children << layout(*export_.row(id), depthLeft, names);
    return result;
}

DBusMenu::Recognition DBusMenu::handleEvent(int id, QString const& event, uint timestamp)
{
    auto const* row = export_.row(id);
    if (row == nullptr)
        return Recognition::Unknown;
    if (event == "opened"_L1)
        opened(id);
    if (event != "clicked"_L1 || row->item == nullptr)
        return Recognition::Known;
    noteUserAction(timestamp != 0 ? timestamp : lastUserAction().time);
    // The host gets its answer first, and the item is a copy: the action may replace the menu.
    QMetaObject::invokeMethod(
        this, [item = *row->item] { performAction(item); }, Qt::QueuedConnection);
    return Recognition::Known;
}

void DBusMenu::opened(int id)
{
    if (id != MenuExport::rootId || !onOpen)
        return;
    // The host gets its answer first.
    QMetaObject::invokeMethod(
        this, [callback = onOpen] { callback(); }, Qt::QueuedConnection);
}

void DBusMenu::emitSignal(QString const& name, QVariantList const& arguments)
{
    auto signal = QDBusMessage::createSignal(QString::fromLatin1(objectPath), menuInterface, name);
    signal.setArguments(arguments);
    connection_.send(signal);
}

void DBusMenu::emitPropertiesUpdated(std::vector<ChangedRow> const& changed)
{
    QList<MenuRowProperties> updated;
    QList<MenuRowRemovals> removed;
    for (auto const& row : changed) {
        updated << MenuRowProperties { row.id, row.properties };
        if (!row.removed.isEmpty())
            removed << MenuRowRemovals { row.id, row.removed };
    }
    emitSignal(u"ItemsPropertiesUpdated"_s,
        { QVariant::fromValue(updated), QVariant::fromValue(removed) });
}

} // namespace quillbar::platform
