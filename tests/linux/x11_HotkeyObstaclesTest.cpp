#include "linux/x11_Fixture.h"

#include <map>
#include <string>
#include <thread>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

constexpr std::uint32_t codeSuper = 55;
constexpr std::uint32_t codeQ = 12;
constexpr std::uint32_t codeKeypad1 = 83;
constexpr std::uint32_t codeWithoutKey = 52;

TEST_F(X11HotkeysTest, Obstacles_nameWhatKeepsACombinationFromWorking)
{
    auto const held = claim(codeT, commandKey, 7);
    ASSERT_TRUE(other.grab(keyT, superMask | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK));
    ASSERT_TRUE(other.grabDevice(keyT, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_LOCK));
    EXPECT_FALSE(claim(codeT, controlKey, 8));
    std::vector<KeyCombination> const combinations { { codeT, commandKey },
        { codeT, commandKey | shiftKey }, { codeT, controlKey }, { codeT, optionKey },
        { codeWithoutKey, commandKey }, { codeS, commandKey } };
    EXPECT_EQ(hotkeyObstacles(combinations),
        (Obstacles {
            {}, HotkeyObstacle::Taken, HotkeyObstacle::Taken, {}, HotkeyObstacle::NoSuchKey, {} }));

    ASSERT_TRUE(other.grabDevice(keySuper, 0));
    ASSERT_TRUE(other.grabDevice(keyT, superMask));
    EXPECT_EQ(hotkeyObstacles(combinations),
        (Obstacles { HotkeyObstacle::Taken, HotkeyObstacle::Taken, HotkeyObstacle::Taken, {},
            HotkeyObstacle::NoSuchKey, HotkeyObstacle::CommandKeyTaken }));
}

TEST_F(X11HotkeysTest, Obstacles_leaveEveryGrabAsItWas)
{
    auto const held = claim(codeT, commandKey, 7);
    // A key that is the Command key itself.
    auto const bareSuper = claim(codeSuper, 0, 8);
    ASSERT_TRUE(bareSuper);
    EXPECT_EQ(hotkeyObstacles({ { codeT, commandKey }, { codeT, optionKey } }), Obstacles(2));
    EXPECT_TRUE(other.grab(keyT, XCB_MOD_MASK_1)) << "what was tried is still held";
    EXPECT_TRUE(other.grabDevice(keyT, XCB_MOD_MASK_1)) << "what was tried is still held";
    EXPECT_FALSE(other.grab(keyT, superMask)) << "a hotkey was given back";
    EXPECT_FALSE(other.grab(keySuper, 0)) << "a hotkey was given back";
}

TEST_F(X11HotkeysTest, PressesWhileObstaclesAreSought_reachWhomTheyAreMeantFor)
{
    OtherClient watcher;
    watcher.watchUnusedKeys();
    // So many that the server attends to the typing in between.
    std::vector<KeyCombination> const combinations(600, { codeF13, commandKey });
    constexpr int rounds = 200;
    std::thread person([this] {
        for (int round = 0; round < rounds; ++round)
            other.tap({ keySuper, keyF13 });
    });
    std::map<std::uint8_t, int> received;
    runUntil([&] {
        static_cast<void>(hotkeyObstacles(combinations));
        for (auto const key : watcher.takePresses())
            ++received[key];
        return received[keySuper] == rounds && received[keyF13] == rounds;
    });
    person.join();
}

TEST_F(X11HotkeysTest, ChangedKeyboard_isToldToTheObservers)
{
    int changes = 0;
    auto observation = observeHotkeyObstacles([&] { ++changes; });
    ASSERT_EQ(QProcess::execute("setxkbmap", { "fr" }), 0);
    runUntil([&] { return changes > 0; });
}

TEST_F(X11HotkeysTest, KeyNames_areThoseOfTheLayoutInUse)
{
    std::vector<KeyCombination> const combinations { { codeT, commandKey | optionKey },
        { codeQ, controlKey | shiftKey }, { codeKeypad1, 0 }, { codeWithoutKey, commandKey } };
    using Names = std::vector<std::string>;
    EXPECT_EQ(
        hotkeyNames(combinations), (Names { "Super+Alt+T", "Control+Shift+Q", "Keypad End", "" }));
    ASSERT_EQ(
        QProcess::execute("setxkbmap", { "-layout", "fr,ru", "-option", "grp:caps_toggle" }), 0);
    EXPECT_EQ(hotkeyNames({ combinations[1] }), Names { "Control+Shift+A" });
    other.tap({ keyCapsLock });
    EXPECT_EQ(hotkeyNames({ combinations[1] }), Names { "Control+Shift+Й" });
}

} // namespace
} // namespace quillbar::platform
