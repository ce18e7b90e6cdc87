#include "linux/PrivateBus.h"
#include "linux/PrivateDisplay.h"
#include "linux/tray_Application.h"
#include "linux/tray_FakeHost.h"
#include "platform/linux/hotkeys/XcbPtr.h"
#include "platform/view/StatusItem.h"

#include <QColor>
#include <QtEndian>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <memory>
#include <string_view>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

/// A tray that embeds windows, on an X connection of its own.
class EmbeddingTray {
public:
    EmbeddingTray()
        : connection_(xcb_connect(nullptr, nullptr))
        , root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root)
        , window_(xcb_generate_id(connection_))
    {
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, side, side, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    EmbeddingTray(EmbeddingTray const&) = delete;
    EmbeddingTray& operator=(EmbeddingTray const&) = delete;
    ~EmbeddingTray() { xcb_disconnect(connection_); }

    void open()
    {
        offerTransparency();
        auto const selection = atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection_, window_, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t announcement {};
        announcement.response_type = XCB_CLIENT_MESSAGE;
        announcement.format = 32;
        announcement.window = root_;
        announcement.type = atom("MANAGER");
        announcement.data.data32[1] = selection;
        announcement.data.data32[2] = window_;
        xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
            reinterpret_cast<char const*>(&announcement));
        xcb_flush(connection_);
    }

    /// The window that asked to be embedded last; none before.
    xcb_window_t docked()
    {
        while (XcbPtr<xcb_generic_event_t> const event { xcb_poll_for_event(connection_) }) {
            if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
                continue;
            auto const* message = reinterpret_cast<xcb_client_message_event_t const*>(event.get());
            if (message->type == atom("_NET_SYSTEM_TRAY_OPCODE"))
                docked_ = message->data.data32[2];
        }
        return docked_;
    }

    bool exists(xcb_window_t window)
    {
        XcbPtr<xcb_get_window_attributes_reply_t> const reply(xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, window), nullptr));
        return reply != nullptr;
    }

    /// Shows the window that asked, in the tray's own.
    void embed()
    {
        xcb_reparent_window(connection_, docked(), window_, 0, 0);
        xcb_map_window(connection_, docked_);
        xcb_map_window(connection_, window_);
        xcb_flush(connection_);
    }

    /// What is seen in the middle of the icon; black while that is nothing.
    QColor color()
    {
        XcbPtr<xcb_get_image_reply_t> const image(xcb_get_image_reply(connection_,
            xcb_get_image(
                connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, docked_, side / 2, side / 2, 1, 1, ~0U),
            nullptr));
        return image ? QColor::fromRgb(qFromLittleEndian<quint32>(xcb_get_image_data(image.get())))
                     : QColor(Qt::black);
    }

private:
    static constexpr int side = 24;

    /// Icons get a visual with alpha, and are told that white suits what is behind them.
    void offerTransparency()
    {
        auto depths = xcb_screen_allowed_depths_iterator(
            xcb_setup_roots_iterator(xcb_get_setup(connection_)).data);
        while (depths.data->depth != 32)
            xcb_depth_next(&depths);
        set("_NET_SYSTEM_TRAY_VISUAL", XCB_ATOM_VISUALID,
            { xcb_depth_visuals(depths.data)->visual_id });
        set("_NET_SYSTEM_TRAY_COLORS", XCB_ATOM_CARDINAL, std::vector<std::uint32_t>(12, 0xffff));
    }

    void set(std::string_view name, xcb_atom_t type, std::vector<std::uint32_t> const& values)
    {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom(name), type, 32,
            static_cast<std::uint32_t>(values.size()), values.data());
    }

    xcb_atom_t atom(std::string_view name)
    {
        XcbPtr<xcb_intern_atom_reply_t> const reply(xcb_intern_atom_reply(connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply->atom;
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
    xcb_window_t window_;
    xcb_window_t docked_ = XCB_WINDOW_NONE;
};

TEST(LegacyTray, IsUsedOnlyWhileThereIsNoHostOnTheBus)
{
    PrivateDisplay const display;
    PrivateBus const bus;
    qputenv("QT_QPA_PLATFORM", "xcb");
    application();
    EmbeddingTray tray;
    FakeHost host(bus, "host");
    {
        StatusItem item;
        item.button().setImage(SymbolImage { "heart.fill", "Quillbar", {}, {} });
        // Whoever starts later than the program announces itself.
        QCoreApplication::processEvents();
        EXPECT_EQ(tray.docked(), XCB_WINDOW_NONE);
        tray.open();
        EXPECT_TRUE(waitUntil([&tray] { return tray.docked() != XCB_WINDOW_NONE; }));
        auto const icon = tray.docked();
        EXPECT_TRUE(tray.exists(icon));
        tray.embed();
        auto const isRed = [&tray] { return tray.color().red() > tray.color().blue() + 100; };
        item.button().setContentTintColor(Color(Rgba { .red = 1 }));
        EXPECT_TRUE(waitUntil(isRed));
        item.button().setContentTintColor({});
        EXPECT_TRUE(waitUntil([&] { return tray.color() == Qt::white; }));
        host.becomeWatcher();
        EXPECT_TRUE(waitUntil([&] { return host.items.size() == 1 && !tray.exists(icon); }));
        host.setHasHost(false);
        EXPECT_TRUE(waitUntil([&] { return tray.docked() != icon && tray.exists(tray.docked()); }))
            << "a watcher alone shows nothing";
        host.setHasHost(true);
        EXPECT_TRUE(waitUntil([&tray] { return !tray.exists(tray.docked()); }));
        auto const second = tray.docked();
        host.resign();
        EXPECT_TRUE(waitUntil([&] { return tray.docked() != second; })) << "a new window asks";
    }
    EXPECT_TRUE(waitUntil([&tray] { return !tray.exists(tray.docked()); }));
    delete &application();
}

} // namespace
} // namespace quillbar::platform
