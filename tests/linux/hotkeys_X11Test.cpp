#include "linux/PrivateDisplay.h"
#include "linux/hotkeys_OtherClient.h"
#include "platform/ChildProcess.h"
#include "platform/KeyModifiers.h"
#include "platform/SystemHotkeys.h"
#include "platform/linux/UserTime.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QProcess>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

constexpr std::uint32_t codeS = 1;
constexpr std::uint32_t codeT = 17;
constexpr std::uint32_t codeF13 = 105;
constexpr std::uint32_t codeSuper = 55;
constexpr std::uint32_t codeQ = 12;
constexpr std::uint32_t codeSpace = 49;
constexpr std::uint32_t codeF1 = 122;
constexpr std::uint32_t codeKeypad1 = 83;
constexpr std::uint32_t codePageUp = 116;
constexpr std::uint32_t codeWithoutKey = 52;
constexpr std::uint16_t superMask = XCB_MOD_MASK_4;
constexpr std::uint32_t signature = 0x5155494C;
constexpr std::uint32_t markerId = 99;

/// Counts how often the process's sockets had something to read: the server tells auto-repeats to
/// nobody but the holder of the grab.
class ReadCounter : public QObject {
public:
    ReadCounter() { QCoreApplication::instance()->installEventFilter(this); }

    [[nodiscard]] int count() const { return count_; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count_ += event->type() == QEvent::SockAct ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

class X11HotkeysTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        display = std::make_unique<PrivateDisplay>();
        qputenv("QT_QPA_PLATFORM", "xcb");
        static int argumentCount = 1;
        static char name[] = "test";
        static char* arguments[] = { name, nullptr };
        application = std::make_unique<QGuiApplication>(argumentCount, arguments);
    }

    static void TearDownTestSuite()
    {
        application.reset();
        display.reset();
    }

    void SetUp() override
    {
        QProcess::execute("setxkbmap", { "-layout", "us", "-option", "" });
        installHotkeyHandler([this](std::uint32_t id) {
            fired.push_back(id);
            if (onFired)
                onFired(id);
        });
        marker = registerSystemHotkey(codeS, commandKey | controlKey, signature, markerId);
        ASSERT_TRUE(marker);
    }

    void TearDown() override { installHotkeyHandler(nullptr); }

    static void waitUntil(std::function<bool()> const& isDone)
    {
        QDeadlineTimer const deadline { 60'000 };
        while (!isDone()) {
            ASSERT_FALSE(deadline.hasExpired()) << "what the test waits for never came";
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
    }

    /// What fired so far: a last hotkey, pressed now, comes after everything before.
    std::vector<std::uint32_t> firedUntilNow()
    {
        other.tap({ keyControl, keySuper, keyS });
        waitUntil(
            [this] { return std::find(fired.begin(), fired.end(), markerId) != fired.end(); });
        if (!fired.empty())
            fired.pop_back();
        return std::exchange(fired, {});
    }

    static Token claim(std::uint32_t code, std::uint32_t modifiers, std::uint32_t id)
    {
        return registerSystemHotkey(code, modifiers, signature, id);
    }

    using Ids = std::vector<std::uint32_t>;
    using Obstacles = std::vector<std::optional<HotkeyObstacle>>;
    static inline std::unique_ptr<PrivateDisplay> display;
    static inline std::unique_ptr<QGuiApplication> application;
    OtherClient other;
    std::vector<std::uint32_t> fired;
    std::function<void(std::uint32_t)> onFired;
    Token marker;
};

TEST_F(X11HotkeysTest, Press_firesWithTheExactModifiersOnly)
{
    auto const hotkey = claim(codeT, commandKey | optionKey, 7);
    ASSERT_TRUE(hotkey);
    other.tap({ keySuper, keyAlt, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 });
    EXPECT_NE(userTime(), 0u);

    other.tap({ keySuper, keyT });
    other.tap({ keySuper, keyAlt, keyShift, keyT });
    other.tap({ keyT });
    EXPECT_EQ(firedUntilNow(), Ids {});
}

TEST_F(X11HotkeysTest, Press_firesInEveryLockState)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    for (auto const lock : { keyCapsLock, keyNumLock, keyCapsLock, keyNumLock }) {
        other.tap({ lock });
        other.tap({ keySuper, keyT });
        EXPECT_EQ(firedUntilNow(), Ids { 7 }) << int { lock };
    }
}

TEST_F(X11HotkeysTest, HeldKey_firesOnce)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    ReadCounter const reads;
    other.press(keySuper);
    other.press(keyT);
    waitUntil([&] { return !fired.empty() && reads.count() > 4; });
    other.release(keyT);
    other.release(keySuper);
    EXPECT_EQ(firedUntilNow(), Ids { 7 });

    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 });
}

TEST_F(X11HotkeysTest, RolledKeys_fireEachAndAgain)
{
    auto const first = claim(codeT, commandKey, 7);
    auto const second = claim(codeS, commandKey, 8);
    for (int round = 0; round < 2; ++round) {
        other.press(keySuper);
        other.press(keyT);
        other.press(keyS);
        other.release(keyT);
        other.release(keyS);
        other.release(keySuper);
        EXPECT_EQ(firedUntilNow(), (Ids { 7, 8 }));
    }
}

TEST_F(X11HotkeysTest, Layout_doesNotMatter)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    for (auto const* const layout : { "fr", "ru", "dvorak" }) {
        ASSERT_EQ(QProcess::execute("setxkbmap", { layout }), 0);
        other.tap({ keySuper, keyT });
        EXPECT_EQ(firedUntilNow(), Ids { 7 }) << layout;
    }
    ASSERT_EQ(
        QProcess::execute("setxkbmap", { "-layout", "us,ru", "-option", "grp:caps_toggle" }), 0);
    other.tap({ keyCapsLock });
    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 }) << "in the second group";
}

TEST_F(X11HotkeysTest, MovedModifierKeys_areFollowed)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    ASSERT_EQ(QProcess::execute("setxkbmap", { "-option", "altwin:swap_alt_win" }), 0);
    other.tap({ keyAlt, keyT });
    other.tap({ keySuper, keyT });
    other.tap({ keyControl, keyAlt, keyS });
    // What is pressed after a hotkey counts by the mapping of when the hotkey has been dealt with.
    waitUntil([this] { return fired.size() >= 2; });
    EXPECT_EQ(std::exchange(fired, {}), (Ids { 7, markerId }));
    ASSERT_EQ(QProcess::execute("setxkbmap", { "-option", "" }), 0);
    EXPECT_EQ(firedUntilNow(), Ids {});
}

TEST_F(X11HotkeysTest, MovedModifierBits_areGrabbedAgainOnceTheyAreFree)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    auto rival = std::make_unique<OtherClient>();
    ASSERT_TRUE(rival->grab(keyT, superMask | XCB_MOD_MASK_3));
    ASSERT_EQ(QProcess::execute("xmodmap",
                  { "-e", "clear mod2", "-e", "clear mod3", "-e", "add mod3 = Num_Lock" }),
        0);
    EXPECT_EQ(firedUntilNow(), Ids {});
    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids {});
    rival.reset();
    waitUntil([] { return hotkeyObstacles({ { codeT, commandKey } }) == Obstacles(1); });
    other.tap({ keyNumLock });
    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 });
    other.tap({ keyNumLock });
}

TEST_F(X11HotkeysTest, TakenCombination_isRefusedAndDisturbsNothing)
{
    ASSERT_TRUE(other.grab(keyT, superMask | XCB_MOD_MASK_LOCK));
    EXPECT_FALSE(claim(codeT, commandKey, 7));
    EXPECT_TRUE(claim(codeT, optionKey, 8));

    OtherClient third;
    EXPECT_TRUE(third.grab(keyT, superMask)) << "a part of the refused hotkey is still held";
    other.tap({ keyCapsLock });
    other.tap({ keySuper, keyT });
    other.tap({ keyCapsLock });
    EXPECT_NE(std::ranges::count(other.takePresses(), keyT), 0);
    EXPECT_EQ(firedUntilNow(), Ids {});
}

TEST_F(X11HotkeysTest, Combination_isTakenUntilItsTokenIsDestroyed)
{
    auto hotkey = claim(codeT, commandKey, 7);
    EXPECT_FALSE(claim(codeT, commandKey, 8));
    EXPECT_FALSE(other.grab(keyT, superMask));
    hotkey.reset();
    waitUntil([this] { return other.grab(keyT, superMask); });
    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids {});
}

TEST_F(X11HotkeysTest, Combination_givenBackAndClaimedAnewLosesNoPress)
{
    auto first = claim(codeT, commandKey, 7);
    auto second = claim(codeS, commandKey, 8);
    first.reset();
    second.reset();
    other.tap({ keySuper, keyT });
    first = claim(codeT, commandKey, 9);
    EXPECT_EQ(firedUntilNow(), Ids { 9 });
    EXPECT_TRUE(other.grab(keyS, superMask));
    EXPECT_FALSE(other.grab(keyT, superMask));
}

TEST_F(X11HotkeysTest, Handler_mayFreeAndClaimHotkeys)
{
    auto hotkey = claim(codeT, commandKey, 7);
    onFired = [&](std::uint32_t id) {
        if (id != markerId) {
            hotkey.reset();
            hotkey = claim(codeT, commandKey, id + 1);
        }
    };
    other.press(keySuper);
    other.press(keyT);
    other.press(keyT);
    other.release(keyT);
    other.release(keySuper);
    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), (Ids { 7, 8 }));
}

TEST_F(X11HotkeysTest, PressDuringARegistration_isNotLost)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    other.tap({ keySuper, keyT });
    // Its wait reads the press too, and leaves nothing on the socket.
    auto const later = claim(codeS, commandKey, 8);
    waitUntil([this] { return !fired.empty(); });
    EXPECT_EQ(fired, Ids { 7 });
    fired.clear();
}

TEST_F(X11HotkeysTest, PairedKeys_areBothGrabbed)
{
    auto const hotkey = claim(codeF13, commandKey, 7);
    other.tap({ keySuper, keyF13 });
    other.tap({ keySuper, keyPrintScreen });
    EXPECT_EQ(firedUntilNow(), (Ids { 7, 7 }));
}

TEST_F(X11HotkeysTest, ImpossibleCombinations_areRefused)
{
    struct Case {
        std::uint32_t code;
        std::uint32_t modifiers;
    };
    for (auto const& [code, modifiers] : { Case { 52, commandKey }, Case { 63, commandKey },
             Case { 127, 0 }, Case { 128, commandKey }, Case { 0xffffffff, commandKey },
             Case { codeT, 1 }, Case { codeT, 0xffffffff } })
        EXPECT_FALSE(claim(code, modifiers, 7)) << code;
}

TEST_F(X11HotkeysTest, Obstacles_nameWhatKeepsACombinationFromWorking)
{
    auto const held = claim(codeT, commandKey, 7);
    ASSERT_TRUE(other.grab(keyT, superMask | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK));
    std::vector<KeyCombination> const combinations { { codeT, commandKey },
        { codeT, commandKey | shiftKey }, { codeT, optionKey }, { codeWithoutKey, commandKey },
        { codeS, commandKey } };
    EXPECT_EQ(hotkeyObstacles(combinations),
        (Obstacles { {}, HotkeyObstacle::Taken, {}, HotkeyObstacle::NoSuchKey, {} }));

    ASSERT_TRUE(other.grab(keySuper, 0));
    EXPECT_EQ(hotkeyObstacles(combinations),
        (Obstacles { HotkeyObstacle::CommandKeyTaken, HotkeyObstacle::Taken, {},
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
    EXPECT_FALSE(other.grab(keyT, superMask)) << "a hotkey was given back";
    EXPECT_FALSE(other.grab(keySuper, 0)) << "a hotkey was given back";
}

TEST_F(X11HotkeysTest, PressesWhileObstaclesAreSought_reachWhomTheyAreMeantFor)
{
    OtherClient watcher;
    watcher.watchUnusedKeys();
    // So many that the server attends to the typing in between.
    std::vector<KeyCombination> const combinations(3000, { codeF13, commandKey });
    constexpr int rounds = 200;
    std::thread person([this] {
        for (int round = 0; round < rounds; ++round)
            other.tap({ keySuper, keyF13 });
    });
    std::map<std::uint8_t, int> received;
    waitUntil([&] {
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
    waitUntil([&] { return changes > 0; });
}

TEST_F(X11HotkeysTest, KeyNames_areThoseOfTheLayoutInUse)
{
    std::vector<KeyCombination> const combinations { { codeT, commandKey | optionKey },
        { codeQ, controlKey | shiftKey }, { codeSpace, 0 }, { codeF1, 0 }, { codeKeypad1, 0 },
        { codePageUp, 0 }, { codeWithoutKey, commandKey } };
    using Names = std::vector<std::string>;
    EXPECT_EQ(hotkeyNames(combinations),
        (Names { "Super+Alt+T", "Control+Shift+Q", "Space", "F1", "Keypad End", "Page Up", "" }));
    ASSERT_EQ(
        QProcess::execute("setxkbmap", { "-layout", "fr,ru", "-option", "grp:caps_toggle" }), 0);
    EXPECT_EQ(hotkeyNames({ combinations[1] }), Names { "Control+Shift+A" });
    other.tap({ keyCapsLock });
    EXPECT_EQ(hotkeyNames({ combinations[1] }), Names { "Control+Shift+Й" });
}

TEST_F(X11HotkeysTest, AHotkeyPressedWhileTheProgramWaitsForAChild_fires)
{
    auto const pipe = std::filesystem::temp_directory_path()
        / ("quillbar-hotkeys-" + std::to_string(::getpid()));
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    onFired = [&](std::uint32_t) { std::ofstream { pipe } << "end\n"; };
    other.tap({ keyControl, keySuper, keyS });
    EXPECT_EQ(readChildOutput({ "/bin/sh", "-c", "read line <'" + pipe.string() + "'" }), "");
    std::filesystem::remove(pipe);
    EXPECT_EQ(fired, Ids { markerId });
}

} // namespace
} // namespace quillbar::platform
