#include "linux/PrivateBus.h"
#include "linux/Support.h"
#include "linux/portal_FakePortal.h"
#include "platform/KeyModifiers.h"
#include "platform/linux/input/KeyNames.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/portal/PortalHotkeys.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::platform {

static void PrintTo(HotkeyObstacle obstacle, std::ostream* stream)
{
    *stream << "obstacle " << static_cast<int>(obstacle);
}

namespace {

using namespace Qt::StringLiterals;
using quillbar::testing::FakePortal;
using quillbar::testing::runUntil;

constexpr std::uint32_t keyT = 17;
constexpr std::uint32_t keyB = 11;
constexpr std::uint32_t keyF5 = 96;
constexpr std::uint32_t noKey = 52;
constexpr KeyModifiers controlOption = controlKey | optionKey;

TEST(TriggerText, NamesModifiersAndTheKeyOfAUsKeyboard)
{
    struct Case {
        KeyCombination combination;
        std::optional<QString> text;
    };
    for (auto const& [combination, text] : {
             Case { { keyF5, controlKey | shiftKey }, u"CTRL+SHIFT+F5"_s },
             Case { { 49, controlKey }, u"CTRL+space"_s },
             Case { { 83, optionKey }, u"ALT+KP_End"_s },
             Case { { 0x10000 + 164, 0 }, u"XF86AudioPlay"_s },
             Case { { noKey, controlKey }, std::nullopt },
             Case { { 0xffffffff, controlKey }, std::nullopt },
         })
        EXPECT_EQ(triggerText(combination), text) << combination.keyCode;
}

class PortalHotkeysTest : public ::testing::Test {
protected:
    PortalHotkeysTest()
        : bus(quillbar::testing::busConfiguration(folder.path()))
    {
        quillbar::testing::startApplication();
    }

    void startPortal() { portal = std::make_unique<FakePortal>(bus); }

    void startHotkeys()
    {
        hotkeys
            = std::make_shared<PortalHotkeys>([this](std::uint32_t id) { presses.push_back(id); });
        hotkeys->onObstaclesChange = [this] { ++changes; };
    }

    void claim(std::uint32_t key, std::uint32_t id, std::string const& title)
    {
        tokens.push_back(hotkeys->claim(key, controlOption, id, title));
    }

    void waitForCall(QString const& member)
    {
        runUntil([&] { return portal->calls.contains(member); });
    }

    /// What the portal was called for, after all that was sent to it until now.
    QStringList callsSoFar()
    {
        QCoreApplication::processEvents();
        static_cast<void>(quillbar::testing::ask(QDBusConnection::sessionBus(),
            portalCall(portalName, portalPath, "test.Test", u"Marker"_s)));
        auto calls = portal->calls;
        portal->calls.clear();
        calls.removeAll(u"Marker"_s);
        return calls;
    }

    /// Waits until the hotkeys have digested something new about the portal.
    void waitForNews()
    {
        auto const before = changes;
        runUntil([&] { return changes > before; });
    }

    std::optional<HotkeyObstacle> obstacle(std::uint32_t key)
    {
        return hotkeys->obstacles({ { key, controlOption } }).front();
    }

    /// Claims T and B, and waits until the portal has answered.
    void bindTwo()
    {
        startPortal();
        portal->answer.clear();
        startHotkeys();
        claim(keyT, 1, "Quick open");
        claim(keyB, 2, "Run “B”");
        waitForCall(u"BindShortcuts"_s);
        portal->answer = { 0u, QVariantMap() };
        portal->respond(portal->answer);
        waitForNews();
    }

    [[nodiscard]] QString idOf(std::string const& description) const
    {
        for (auto const& shortcut : portal->asked) {
            if (shortcut.description.toStdString() == description)
                return shortcut.id;
        }
        ADD_FAILURE() << description << " was not asked for";
        return {};
    }

    quillbar::testing::TemporaryFolder folder;
    quillbar::testing::PrivateBus bus;
    std::unique_ptr<FakePortal> portal;
    std::shared_ptr<PortalHotkeys> hotkeys;
    std::vector<Token> tokens;
    std::vector<std::uint32_t> presses;
    int changes = 0;
};

QStringList const wholeTalk { u"Register"_s, u"Get"_s, u"CreateSession"_s, u"BindShortcuts"_s };
QStringList const newSession { u"Close session"_s, u"CreateSession"_s, u"BindShortcuts"_s };

TEST_F(PortalHotkeysTest, Set_isAskedForAtOnceAndAgainOnlyWhenItChanges)
{
    bindTwo();
    EXPECT_EQ(callsSoFar(), wholeTalk);
    ASSERT_EQ(portal->asked.size(), 2u);
    auto const first = portal->asked;
    auto const quickOpen = idOf("Quick open");

    tokens.clear();
    claim(keyB, 3, "Run “B”");
    claim(keyT, 4, "Quick open");
    EXPECT_EQ(callsSoFar(), QStringList());
    portal->activate(portal->sessionPath, quickOpen);
    runUntil([&] { return !presses.empty(); });
    EXPECT_EQ(presses, std::vector<std::uint32_t> { 4 });

    tokens.clear();
    claim(keyT, 5, "Quick open");
    claim(keyF5, 6, std::string(5000, 'x'));
    waitForCall(u"BindShortcuts"_s);
    EXPECT_EQ(callsSoFar(), newSession);
    EXPECT_EQ(idOf("Quick open"), quickOpen);
    for (auto const& shortcut : portal->asked)
        EXPECT_LE(shortcut.description.size(), 100);

    tokens.clear();
    runUntil([&] { return portal->calls.contains(u"Close session"_s); });
    EXPECT_EQ(callsSoFar(), QStringList { u"Close session"_s });
}

TEST_F(PortalHotkeysTest, TakenAtCreation_isNotBoundAndShowsItsKeysInTheNextSession)
{
    startPortal();
    portal->takesAtCreation = true;
    portal->taken = { u"ALT+CTRL+b"_s };
    startHotkeys();
    claim(keyT, 1, "Quick open");
    claim(keyB, 2, "Run “B”");
    runUntil([&] { return obstacle(keyB) == HotkeyObstacle::Taken; });
    EXPECT_EQ(obstacle(keyT), std::nullopt);
    QStringList const twoSessions { u"CreateSession"_s, u"Close session"_s, u"CreateSession"_s };
    EXPECT_EQ(callsSoFar(), QStringList({ u"Register"_s, u"Get"_s }) + twoSessions);
    auto const session = portal->sessionPath;
    auto const id = idOf("Quick open");

    tokens.clear();
    claim(keyT, 3, "Renamed");
    runUntil([&] { return portal->calls.count(u"CreateSession"_s) == 2; });
    EXPECT_EQ(callsSoFar(), QStringList { u"Close session"_s } + twoSessions);
    EXPECT_EQ(portal->sessionPath, session);
    EXPECT_EQ(idOf("Renamed"), id) << "desktops hold the keys of an id";
    portal->activate(session, id);
    runUntil([&] { return !presses.empty(); });
    EXPECT_EQ(presses, std::vector<std::uint32_t> { 3 });
}

TEST_F(PortalHotkeysTest, Portal_isCalledOnlyInTheApplicationsOwnScope)
{
    startPortal();
    portal->becomeUnitManager();
    startHotkeys();
    claim(keyT, 1, "a");
    waitForCall(u"StartTransientUnit"_s);
    auto const own
        = u"app-com.quillbar.Quillbar-%1.scope"_s.arg(QCoreApplication::applicationPid());
    for (auto const& unit : { u"other.scope"_s, own }) {
        EXPECT_FALSE(callsSoFar().contains(u"Get"_s));
        portal->emitSignal(u"/org/freedesktop/systemd1"_s, u"org.freedesktop.systemd1.Manager"_s,
            u"JobRemoved"_s,
            { 1u, QVariant::fromValue(QDBusObjectPath(u"/job"_s)), unit, u"done"_s });
    }
    waitForCall(u"BindShortcuts"_s);
}

TEST_F(PortalHotkeysTest, Press_countsFromThePortalForItsOwnSessionAndIdsOnly)
{
    bindTwo();
    auto const id = idOf("Run “B”");
    auto const interface = QString::fromLatin1(globalShortcutsInterface);
    auto const session = QVariant::fromValue(QDBusObjectPath(portal->sessionPath));
    portal->activate(portalPath + "/session/1_1/quillbar1"_L1, id);
    portal->activate(portal->sessionPath, u"hotkey-unknown"_s);
    for (auto const& arguments : {
             QVariantList { session },
             QVariantList { portal->sessionPath, id, 1ULL, QVariantMap() },
             QVariantList { session, 7, 1ULL, QVariantMap() },
             QVariantList { session, id, u"now"_s, QVariantMap() },
             QVariantList { session, id, 1ULL, QStringList() },
         })
        portal->emitSignal(portalPath, interface, u"Activated"_s, arguments);
    auto stranger = bus.connect(u"stranger"_s);
    auto signal = QDBusMessage::createSignal(portalPath, interface, u"Activated"_s);
    signal.setArguments({ session, id, 1ULL, QVariantMap() });
    stranger.send(signal);
    // The stranger's answer comes after its signal.
    static_cast<void>(quillbar::testing::ask(
        stranger, portalCall(portalName, portalPath, "test.Test", u"Marker"_s)));
    portal->activate(portal->sessionPath, id, { { u"activation_token"_s, 3 } });
    runUntil([&] { return !presses.empty(); });
    EXPECT_EQ(presses, std::vector<std::uint32_t> { 2 });
    EXPECT_EQ(lastUserAction().time, 12345u);
}

TEST_F(PortalHotkeysTest, Declined_isNotAskedAgainUntilTheSetChanges)
{
    startPortal();
    portal->answer = { 1u, QVariantMap() };
    startHotkeys();
    claim(keyT, 1, "a");
    runUntil([&] { return obstacle(keyT) == HotkeyObstacle::Declined; });
    EXPECT_EQ(obstacle(keyB), std::nullopt) << "nobody was asked for it";

    portal.reset();
    waitForNews();
    EXPECT_EQ(obstacle(keyT), HotkeyObstacle::NoService);
    startPortal();
    waitForNews();
    EXPECT_EQ(obstacle(keyT), HotkeyObstacle::Declined);
    EXPECT_EQ(callsSoFar(), QStringList({ u"Register"_s, u"Get"_s }));

    claim(keyB, 2, "b");
    waitForCall(u"BindShortcuts"_s);
    runUntil([&] { return !obstacle(keyT); });

    portal.reset();
    waitForNews();
    startPortal();
    waitForCall(u"BindShortcuts"_s);
}

TEST_F(PortalHotkeysTest, ThrownOffTheBus_bindsAgain)
{
    bindTwo();
    portal->calls.clear();
    // Qt's answer repeats the path, and is longer than the bus takes.
    auto const client = portal->sessionPath.section('/'_L1, 6, 6).replace('_'_L1, '.'_L1);
    static_cast<void>(quillbar::testing::ask(QDBusConnection::sessionBus(),
        QDBusMessage::createMethodCall(
            ':'_L1 + client, '/'_L1 + QString(99905, 'x'_L1), {}, u"Marker"_s)));
    waitForCall(u"BindShortcuts"_s);
    portal->activate(portal->sessionPath, idOf("Quick open"));
    runUntil([&] { return !presses.empty(); });
}

TEST_F(PortalHotkeysTest, LeftOutOrTakenBack_countsAsDeclined)
{
    bindTwo();
    auto const kept = idOf("Quick open");
    portal->answer = { 0u,
        QVariantMap { { u"shortcuts"_s,
            QVariant::fromValue(QList<ShortcutProperties> { { kept, {} }, { u"x"_s, {} } }) } } };
    claim(keyF5, 3, "c");
    runUntil([&] { return obstacle(keyF5) == HotkeyObstacle::Declined; });
    EXPECT_EQ(obstacle(keyB), HotkeyObstacle::Declined);
    EXPECT_EQ(obstacle(keyT), std::nullopt);

    portal->emitSignal(
        portal->sessionPath, u"org.freedesktop.portal.Session"_s, u"Closed"_s, { QVariantMap() });
    runUntil([&] { return obstacle(keyT) == HotkeyObstacle::Declined; });
}

TEST_F(PortalHotkeysTest, MalformedAnswer_isNone)
{
    bindTwo();
    portal->answer.clear();
    claim(keyF5, 3, "c");
    portal->calls.clear();
    waitForCall(u"BindShortcuts"_s);
    for (auto const& arguments : { QVariantList {}, QVariantList { 0u }, QVariantList { u"0"_s },
             QVariantList { -1, QVariantMap() }, QVariantList { 0u, QStringList() } })
        portal->respond(arguments);
    portal->respond({ 0u, QVariantMap { { u"shortcuts"_s, 7 } } });
    waitForNews();
    EXPECT_EQ(obstacle(keyF5), std::nullopt);
}

} // namespace
} // namespace quillbar::platform
