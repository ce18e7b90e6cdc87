#include "fuzz/MenuSource.h"
#include "fuzz/Target.h"
#include "linux/MenuEvent.h"
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
#include <memory>
#include <optional>
#include <string_view>

namespace quillbar::platform {

/// No row of these menus ends the program.
void terminate()
{
    testing::require(false, "a row does what it says");
}

} // namespace quillbar::platform

namespace quillbar::testing {

using platform::DBusMenu;
using platform::Menu;

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

enum class Kind { SetMenu, Event, EventGroup, FittingCall, AnyCall };
constexpr int kinds = 5;

/// Any call has any interface and arguments; the others those that the method takes.
Call call(Source& source, Kind kind)
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
    constexpr std::size_t eventIndex = 9;
    auto const index = kind == Kind::Event ? eventIndex
        : kind == Kind::EventGroup         ? eventIndex + 1
                                           : source.byte() % std::size(methods);
    auto const& [interface, name, types] = methods[index];
    Call call { QString::fromLatin1(interface), QString::fromLatin1(name), {} };
    if (kind != Kind::AnyCall) {
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
            {}, QString::fromLatin1(DBusMenu::objectPath), call.interface, call.method);
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

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    Source source(data, size);
    DBusMenu menu(line().menuSide());
    for (auto left = 12; left > 0 && !source.isAtEnd(); --left) {
        auto const kind = static_cast<Kind>(source.byte() % kinds);
        if (kind == Kind::SetMenu) {
            menu.setMenu(std::make_shared<Menu const>(Menu { {}, menuItems(source) }));
            continue;
        }
        auto const reply = line().ask(call(source, kind));
        require(reply.type() == QDBusMessage::ReplyMessage || isRefusal(reply),
            "every call is answered");
        // What was clicked does what it does.
        QCoreApplication::sendPostedEvents();
    }
    return 0;
}
