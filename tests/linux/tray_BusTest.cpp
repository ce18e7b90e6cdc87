#include "linux/tray_FakeHost.h"
#include "linux/tray_SampleMenu.h"
#include "linux/widgets_Application.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/HostRegistration.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/view/StatusItem.h"

#include <QFile>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

class TrayBusTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        bus = std::make_unique<PrivateBus>();
        application();
    }

    static void TearDownTestSuite() { bus.reset(); }

    void SetUp() override
    {
        host.becomeWatcher();
        item = std::make_unique<StatusItem>();
        item->button().setImage(SymbolImage { "heart.fill", "Quillbar", {}, {} });
        item->button().setToolTip("Quillbar · ⌥⌘T");
        ASSERT_TRUE(waitUntil([this] { return !host.items.isEmpty(); }));
    }

    void setMenu(std::vector<MenuItem> items) { item->setMenu({ {}, std::move(items) }); }

    MenuLayout layout(int parent = 0, int depth = -1, QStringList const& names = {})
    {
        auto const reply = host.callMenu("GetLayout", { parent, depth, names });
        return qdbus_cast<MenuLayout>(reply.arguments().value(1));
    }

    /// The labels of the rows in the menu.
    QStringList labels()
    {
        QStringList result;
        for (auto const& child : layout().children)
            result << qdbus_cast<MenuLayout>(child).properties.value("label").toString();
        return result;
    }

    int idOf(QString const& label)
    {
        return qdbus_cast<MenuLayout>(layout().children.value(labels().indexOf(label))).id;
    }

    QDBusMessage click(int id, uint time = 0)
    {
        return host.callMenu(
            "Event", { id, "clicked", QVariant::fromValue(QDBusVariant(0)), time });
    }

    static std::unique_ptr<PrivateBus> bus;
    FakeHost host { *bus };
    std::unique_ptr<StatusItem> item;
    std::vector<std::string> ran;
    std::function<void(std::string const&)> run
        = [this](std::string const& name) { ran.push_back(name); };
};

std::unique_ptr<PrivateBus> TrayBusTest::bus;

TEST_F(TrayBusTest, FaceCanBeReadPropertyByProperty)
{
    EXPECT_EQ(
        qdbus_cast<ToolTip>(host.property("ToolTip")).title, QString::fromUtf8("Quillbar · ⌥⌘T"));
    auto const pixmaps = qdbus_cast<QList<IconPixmap>>(host.property("IconPixmap"));
    ASSERT_EQ(pixmaps.size(), 2);
    EXPECT_EQ(pixmaps[1].pixels.size(), 44 * 44 * 4);
    EXPECT_EQ(pixmaps[1].pixels[(20 * 44 + 22) * 4], '\xff');
}

TEST_F(TrayBusTest, PulseIsHeldForHostsThatReadLate)
{
    auto& button = item->button();
    for (auto const& [tint, name] : {
             std::pair { std::optional<Color> {}, "quillbar-heart-fill-dim35-symbolic" },
             std::pair { std::optional<Color>(Rgba { .red = 1 }), "quillbar-heart-fill-ff0000" },
         }) {
        button.setContentTintColor(tint);
        button.setAlpha(0.35);
        button.setAlpha(1);
        button.setContentTintColor({});
        for (auto const* const expected : { name, "quillbar-heart-fill-symbolic" }) {
            EXPECT_TRUE(waitUntil([&] { return host.property("IconName") == expected; }));
            EXPECT_TRUE(
                QFile::exists(host.property("IconThemePath").toString() + '/' + expected + ".svg"));
        }
    }
}

TEST_F(TrayBusTest, IconIsNotCalledSymbolicInCinnamon)
{
    host.becomeCinnamon();
    EXPECT_TRUE(waitUntil([this] { return !host.items.isEmpty(); }));
    EXPECT_EQ(host.property("IconName"), "quillbar-heart-fill");
}

TEST_F(TrayBusTest, WatcherAloneIsNoHost)
{
    std::vector<TrayHost> told;
    HostRegistration const registration([&told](TrayHost state) { told.push_back(state); });
    for (auto const state : { TrayHost::Present, TrayHost::Absent, TrayHost::Present }) {
        host.setHasHost(state == TrayHost::Present);
        EXPECT_TRUE(waitUntil([&] { return !told.empty() && told.back() == state; }));
    }
}

TEST_F(TrayBusTest, EachRowIsReadOnceAndAsDeepAsAsked)
{
    setMenu({ heading("WORK"), pin("under_score"), MenuItem::separator() });
    EXPECT_EQ(labels(), QStringList({ "WORK", "under__score", "" }));
    EXPECT_TRUE(layout(0, 0).children.isEmpty());
    auto const id = idOf("under__score");
    EXPECT_EQ(layout(id).properties.keys(), QStringList({ "label" }));
    auto const reply = host.callMenu("GetGroupProperties",
        { QVariant::fromValue(QList<int> { id, id, 4711 }), QStringList { "label" } });
    auto const rows = qdbus_cast<QList<MenuRowProperties>>(reply.arguments().value(0));
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].properties.value("label"), "under__score");
}

TEST_F(TrayBusTest, EqualMenuIsSilentAndAChangeIsToldOnce)
{
    auto const badged = [](std::string const& name) {
        auto row = pin(name);
        row.image = std::make_shared<Drawing const>(Drawing { { 16, 16 }, {} });
        return row;
    };
    setMenu({ badged("A"), pin("B") });
    ASSERT_EQ(labels(), QStringList({ "A", "B" }));
    host.signalNames.clear();
    setMenu({ badged("A"), pin("B") });
    setMenu({ badged("A"), pin("B"), pin("C") });
    auto renamed = badged("A");
    renamed.title = "A  (⌥⌘B)";
    setMenu({ renamed, pin("B"), pin("C") });
    EXPECT_TRUE(waitUntil([this] { return host.signalNames.size() >= 3; }));
    EXPECT_EQ(host.signalNames,
        QStringList({ "LayoutUpdated", "ItemsPropertiesUpdated", "LayoutUpdated" }));
}

TEST_F(TrayBusTest, ClickRunsTheItemThatWasShown)
{
    setMenu({ pin("A", run), pin("B", run), pin("A", run) });
    auto const a = idOf("A");
    auto const b = idOf("B");
    setMenu({ pin("B", run), pin("C", run) });
    EXPECT_EQ(click(a).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(click(b, 4242).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(waitUntil([this] { return !ran.empty(); }));
    EXPECT_EQ(ran, std::vector<std::string>({ "B" }));
    EXPECT_EQ(lastUserAction().time, 4242U);
}

TEST_F(TrayBusTest, EventGroupRunsWhatItKnowsOnceAndNamesTheRest)
{
    auto disabled = pin("off", run);
    disabled.isEnabled = false;
    setMenu({ pin("A", run), disabled });
    auto const event = [](int id, QString const& name = "clicked") {
        return MenuEvent { id, name, QDBusVariant(0), 99 };
    };
    auto const send = [this](QList<MenuEvent> const& events) {
        return host.callMenu("EventGroup", { QVariant::fromValue(events) });
    };
    auto const a = idOf("A");
    auto const reply = send(
        { event(4711), event(4711), event(idOf("off")), event(a, "hovered"), event(a), event(a) });
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>({ 4711 }));
    EXPECT_EQ(send({ event(4711) }).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(send({}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(waitUntil([this] { return !ran.empty(); }));
    EXPECT_EQ(ran, std::vector<std::string>({ "A" }));
    EXPECT_EQ(lastUserAction().time, 99U);
}

TEST_F(TrayBusTest, ActionMayReplaceTheMenuAndEvenTheItem)
{
    setMenu({ command("again", [this](auto const&) { setMenu({ pin("B") }); }) });
    click(idOf("again"));
    EXPECT_TRUE(waitUntil([this] { return labels() == QStringList("B"); }));
    setMenu({ command("gone", [this](auto const&) { item.reset(); }) });
    click(idOf("gone"));
    EXPECT_TRUE(waitUntil([this] { return item == nullptr; }));
}

TEST_F(TrayBusTest, NonsenseIsAnsweredByAnError)
{
    setMenu({ pin("A") });
    struct Case {
        char const* method;
        QVariantList arguments;
    };
    for (auto const& [method, arguments] : std::vector<Case> {
             { "GetLayout", { 99, -1, QStringList() } }, { "GetProperty", { 0, "no-such" } },
             { "Event", { -1, "clicked", QVariant::fromValue(QDBusVariant(1)), 0U } },
             { "EventGroup", { 5 } }, { "AboutToShow", { 7000 } },
             { "AboutToShowGroup", { QVariant::fromValue(QList<int> { 7000, 7000 }) } },
             { "NoSuchMethod", { QByteArray(1000, 'x') } } })
        EXPECT_EQ(host.callMenu(method, arguments).type(), QDBusMessage::ErrorMessage) << method;
    host.callItem("ProvideXdgActivationToken", { "panel-1-host_TIME777" });
    EXPECT_EQ(lastUserAction().time, 777U);
    EXPECT_EQ(labels(), QStringList("A"));
}

TEST_F(TrayBusTest, ActivateOpensAndClosesTheMenu)
{
    setMenu({ pin("A") });
    auto const isOpen = [] { return QApplication::activePopupWidget() != nullptr; };
    host.callItem("Activate", { 5, 5 });
    EXPECT_TRUE(waitUntil(isOpen));
    setMenu({ pin("B") });
    EXPECT_TRUE(isOpen());
    host.callItem("Activate", { 5, 5 });
    EXPECT_TRUE(waitUntil([&] { return !isOpen(); }));
}

} // namespace
} // namespace quillbar::platform
