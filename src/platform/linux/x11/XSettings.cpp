#include "platform/linux/x11/XSettings.h"

#include "platform/linux/x11/X11Connection.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::string_view selectionName = "_XSETTINGS_S0";
constexpr std::string_view propertyName = "_XSETTINGS_SETTINGS";

enum class Kind : quint8 { Number, Text, Color };

/// The bytes, which are followed by as many as make a multiple of four.
QByteArray padded(QDataStream& in, quint32 length)
{
    auto text = in.device()->read(std::min<qint64>(length, in.device()->bytesAvailable()));
    in.skipRawData(static_cast<int>((4 - length % 4) % 4));
    return text;
}

xcb_window_t managerOn(xcb_connection_t* connection, xcb_atom_t selection)
{
    XcbPtr<xcb_get_selection_owner_reply_t> const owner { xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr) };
    return owner ? owner->owner : xcb_window_t { XCB_WINDOW_NONE };
}

QByteArray textOf(xcb_connection_t* connection, xcb_window_t manager, xcb_atom_t property,
    QByteArray const& wanted)
{
    constexpr std::uint32_t mostWords = 16384;
    XcbPtr<xcb_get_property_reply_t> const reply { xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, manager, property, property, 0, mostWords), nullptr) };
    if (!reply)
        return {};
    QByteArray const settings(static_cast<char const*>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get()));
    QDataStream in(settings);
    quint8 byteOrder = 0;
    in >> byteOrder;
    in.setByteOrder(byteOrder == XCB_IMAGE_ORDER_LSB_FIRST ? QDataStream::LittleEndian
                                                           : QDataStream::BigEndian);
    in.skipRawData(3);
    quint32 serial = 0;
    quint32 count = 0;
    in >> serial >> count;
    for (; count > 0 && in.status() == QDataStream::Ok; --count) {
        auto kind = Kind::Number;
        quint16 nameLength = 0;
        in >> kind;
        in.skipRawData(1);
        in >> nameLength;
        auto const name = padded(in, nameLength);
        quint32 value = 0;
        in >> serial >> value;
        if (kind == Kind::Color)
            in.skipRawData(4);
        auto text = kind == Kind::Text ? padded(in, value) : QByteArray();
        if (name == wanted)
            return text;
    }
    return {};
}

} // namespace

XSettings::XSettings(std::function<void()> onChange)
    : onChange_(std::move(onChange))
    , connection_(x11Connection())
{
    if (connection_ == nullptr)
        return;
    settings_ = x11Atom(connection_, propertyName);
    manager_ = x11Atom(connection_, "MANAGER");
    selection_ = x11Atom(connection_, selectionName);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

QByteArray XSettings::text(QByteArray const& name) const
{
    if (connection_ == nullptr)
        return {};
    auto const manager = managerOn(connection_, selection_);
    if (manager == XCB_WINDOW_NONE)
        return {};
    // Qt has selected the same events of that window, and one client has one mask.
    std::uint32_t const events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, manager, XCB_CW_EVENT_MASK, &events);
    return textOf(connection_, manager, settings_, name);
}

QByteArray readXSetting(QByteArray const& name)
{
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> const connection(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        return {};
    auto const manager = managerOn(connection.get(), x11Atom(connection.get(), selectionName));
    return manager == XCB_WINDOW_NONE
        ? QByteArray()
        : textOf(connection.get(), manager, x11Atom(connection.get(), propertyName), name);
}

// A manager that starts announces itself by a client message to the root window.
bool XSettings::nativeEventFilter(QByteArray const& eventType, void* message, qintptr* /*result*/)
{
    auto const* const event = x11Event(eventType, message);
    if (event == nullptr)
        return false;
    auto const type = x11EventType(*event);
    auto const* const change = reinterpret_cast<xcb_property_notify_event_t const*>(event);
    auto const* const announcement = reinterpret_cast<xcb_client_message_event_t const*>(event);
    if ((type == XCB_PROPERTY_NOTIFY && change->atom == settings_)
        || (type == XCB_CLIENT_MESSAGE && announcement->type == manager_
            && announcement->data.data32[1] == selection_))
        onChange_();
    return false;
}

} // namespace quillbar::platform
