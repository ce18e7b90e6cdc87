#include "fuzz/MenuSource.h"
#include "fuzz/Target.h"
#include "platform/Application.h"
#include "platform/linux/tray/DBusMenu.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QDBusVariant>
#include <QEventLoop>

#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbar::platform {

/// No row of these menus ends the program.
void terminate()
{
    testing::require(false, "a row does what it says");
}

} // namespace quillbar::platform

namespace quillbar::testing {

using platform::Menu;
using platform::MenuItem;

/// One event of the menu's EventGroup call.
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, MenuEvent const& event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, MenuEvent& event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto introspectionInterface = "org.freedesktop.DBus.Introspectable";

QString string(Source& source)
{
    static constexpr char const* known[]
        = { "clicked", "hovered", "label", "enabled", "icon-data", "type", "Version", "Status" };
    auto const choice = source.byte() % (std::size(known) + 1);
    return choice < std::size(known) ? QString::fromLatin1(known[choice])
                                     : QString::fromStdString(source.text());
}

/// Mostly one that a row may have.
int rowId(Source& source)
{
    auto const choice = source.byte();
    return choice == 0xFF ? source.number() : choice % 16;
}

template <class Make> auto list(Source& source, Make const& make)
{
    QList<decltype(make(source))> result;
    for (auto count = source.byte() % 8; count > 0; --count)
        result << make(source);
    return result;
}

QVariant value(Source& source, char type, int depth = 0);

/// One value of any type; those that hold others come last.
QVariant value(Source& source, int depth = 0)
{
    static constexpr std::string_view types = "isubdyISvmea";
    constexpr int deepest = 6;
    return value(source, types[source.byte() % (types.size() - (depth < deepest ? 0 : 4))], depth);
}

MenuEvent event(Source& source, int depth = 0)
{
    return { rowId(source), string(source), QDBusVariant(value(source, depth + 1)),
        static_cast<uint>(source.number()) };
}

QVariant value(Source& source, char type, int depth)
{
    auto const inner = [depth](Source& from) { return value(from, depth + 1); };
    switch (type) {
    case 'i':
        return rowId(source);
    case 's':
        return string(source);
    case 'u':
        return static_cast<uint>(source.number());
    case 'b':
        return (source.byte() & 1) != 0;
    case 'd':
        return source.number() / 3.0;
    case 'y':
        return QByteArray::fromStdString(source.text());
    case 'I':
        return QVariant::fromValue(list(source, rowId));
    case 'S':
        return QStringList(list(source, string));
    case 'v':
        return QVariant::fromValue(QDBusVariant(inner(source)));
    case 'm':
        return QVariantMap { { string(source), inner(source) } };
    case 'e':
        return QVariant::fromValue(
            list(source, [depth](Source& from) { return event(from, depth + 1); }));
    case 'n':
        return source.number();
    case 'M':
        return QString::fromLatin1(menuInterface);
    default:
        return list(source, inner);
    }
}

struct Call {
    QString interface;
    QString method;
    QVariantList arguments;
};

/// Of any interface and method; when fitting, with the arguments that the method takes.
Call call(Source& source, bool isFitting)
{
    struct Method {
        char const* interface;
        char const* name;
        std::string_view arguments;
    };
    static constexpr Method methods[]
        = { { menuInterface, "GetLayout", "inS" }, { menuInterface, "GetGroupProperties", "IS" },
              { menuInterface, "GetProperty", "is" }, { menuInterface, "AboutToShow", "i" },
              { menuInterface, "AboutToShowGroup", "I" }, { propertiesInterface, "Get", "Ms" },
              { propertiesInterface, "Set", "Msv" }, { propertiesInterface, "GetAll", "M" },
              { introspectionInterface, "Introspect", "" }, { menuInterface, "Event", "isvu" },
              { menuInterface, "EventGroup", "e" }, { "", "Nothing", "" } };
    // Events that fit have what they bring about checked.
    constexpr auto checkedApart = 3;
    auto const& [interface, name, types]
        = methods[source.byte() % (std::size(methods) - (isFitting ? checkedApart : 0))];
    Call call { QString::fromLatin1(interface), QString::fromLatin1(name), {} };
    if (isFitting) {
        for (auto const type : types)
            call.arguments << value(source, type);
        return call;
    }
    call.interface = QString::fromLatin1(methods[source.byte() % std::size(methods)].interface);
    for (auto count = source.byte() % 5; count > 0; --count)
        call.arguments << value(source);
    return call;
}

/// A menu and a host, joined by a socket: what a host sends passes through the D-Bus library.
class Line {
public:
    Line()
    {
        qDBusRegisterMetaType<MenuEvent>();
        qDBusRegisterMetaType<QList<MenuEvent>>();
        QObject::connect(&server_, &QDBusServer::newConnection, &server_,
            [this](QDBusConnection const& connection) { menuSide_ = connection; });
        host_ = QDBusConnection::connectToPeer(server_.address(), QStringLiteral("host"));
        while (!menuSide_)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    [[nodiscard]] QDBusConnection menuSide() const { return *menuSide_; }

    /// The answer, while the menu that gives it runs in the same thread.
    QDBusMessage ask(Call const& call)
    {
        auto message = QDBusMessage::createMethodCall(
            {}, QString::fromLatin1(platform::DBusMenu::objectPath), call.interface, call.method);
        message.setArguments(call.arguments);
        QDBusPendingCallWatcher watcher(host_.asyncCall(message));
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        if (!watcher.isFinished())
            loop.exec();
        return watcher.reply();
    }

private:
    QDBusServer server_ { QStringLiteral("unix:tmpdir=/tmp") };
    std::optional<QDBusConnection> menuSide_;
    QDBusConnection host_ { QString() };
};

Line& line()
{
    // Qt keeps a line's threads for as long as the program runs.
    static auto* const one = [] {
        static int count = 1;
        static char name[] = "fuzz_calls";
        static char* arguments[] = { name, nullptr };
        new QCoreApplication(count, arguments);
        return new Line;
    }();
    return *one;
}

/// Whether the menu itself says no; a line that broke says something else.
bool isRefusal(QDBusMessage const& reply)
{
    using Error = QDBusError;
    auto const error = Error(reply).type();
    return error == Error::InvalidArgs || error == Error::UnknownMethod
        || error == Error::UnknownInterface || error == Error::UnknownProperty
        || error == Error::PropertyReadOnly;
}

/// A menu on the line whose rows note that they were chosen, and what a host knows of it.
class Session {
public:
    void setMenu(std::vector<MenuItem> items)
    {
        items_.clear();
        number(items);
        menu_.setMenu(std::make_shared<Menu const>(Menu { {}, std::move(items) }));
        readLayout();
    }

    void send(Call const& call)
    {
        auto const reply = line().ask(call);
        auto const isAnswer = reply.type() == QDBusMessage::ReplyMessage || isRefusal(reply);
        require(isAnswer, "every call is answered");
    }

    void sendEvent(MenuEvent const& event)
    {
        auto const reply = askMenu(
            "Event", { event.id, event.name, QVariant::fromValue(event.data), event.timestamp });
        require(
            isRefusal(reply) != rows_.contains(event.id), "an event is for a row that is there");
        requireChosen({ event });
    }

    void sendGroup(QList<MenuEvent> const& events)
    {
        QList<int> unknown;
        for (auto const& event : events) {
            if (!rows_.contains(event.id))
                unknown << event.id;
        }
        auto const reply = askMenu("EventGroup", { QVariant::fromValue(events) });
        auto const isRefused = isRefusal(reply);
        require(isRefused == (!unknown.isEmpty() && unknown.size() == events.size()),
            "a group is refused when it knows no row at all");
        require(isRefused || qdbus_cast<QList<int>>(reply.arguments().value(0)) == unknown,
            "a group's answer names the rows that are gone");
        requireChosen(events);
    }

    /// Events that came some other way may have chosen rows too.
    void forgetChosen()
    {
        QCoreApplication::sendPostedEvents();
        chosen_.clear();
    }

private:
    static QDBusMessage askMenu(char const* method, QVariantList const& arguments)
    {
        return line().ask(
            { QString::fromLatin1(menuInterface), QString::fromLatin1(method), arguments });
    }

    /// Has each row that does something note its place in the menu.
    void number(std::vector<MenuItem>& items)
    {
        for (auto& item : items) {
            auto const place = items_.size();
            items_.push_back(item.isEnabled && item.action != nullptr);
            if (item.action)
                item.action = [this, place](MenuItem const&) { chosen_.push_back(place); };
            number(item.submenu);
        }
    }

    void readLayout()
    {
        auto const reply = askMenu("GetLayout", { 0, -1, QStringList() });
        require(reply.signature() == QLatin1String("u(ia{sv}av)"), "the layout can be read");
        rows_.clear();
        auto const layout = qdbus_cast<platform::MenuLayout>(reply.arguments().at(1));
        rows_.emplace(layout.id, std::nullopt);
        place(layout);
        require(rows_.size() == items_.size() + 1, "the layout shows every row once");
    }

    void place(platform::MenuLayout const& layout)
    {
        for (auto const& row : layout.children) {
            rows_.emplace(row.id, rows_.size() - 1);
            place(row);
        }
    }

    void requireChosen(QList<MenuEvent> const& events)
    {
        std::vector<std::size_t> expected;
        for (auto const& event : events) {
            auto const found = rows_.find(event.id);
            if (event.name == QLatin1String("clicked") && found != rows_.end() && found->second
                && items_[*found->second])
                expected.push_back(*found->second);
        }
        QCoreApplication::sendPostedEvents();
        require(std::exchange(chosen_, {}) == expected,
            "a click does what the clicked row does, once, and nothing else does anything");
    }

    platform::DBusMenu menu_ { line().menuSide() };
    /// Whether the row at that place does something.
    std::vector<bool> items_;
    /// The places of the ids; the root has none.
    std::map<int, std::optional<std::size_t>> rows_ { { 0, std::nullopt } };
    std::vector<std::size_t> chosen_;
};

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    line();
    Source source(data, size);
    Session session;
    for (auto left = 12; left > 0 && !source.isAtEnd(); --left) {
        switch (source.byte() % 5) {
        case 0:
            session.setMenu(menuItems(source));
            break;
        case 1:
            session.sendEvent(event(source));
            break;
        case 2:
            session.sendGroup(list(source, [](Source& from) { return event(from); }));
            break;
        case 3:
            session.send(call(source, true));
            break;
        default:
            session.send(call(source, false));
            session.forgetChosen();
        }
    }
    return 0;
}
