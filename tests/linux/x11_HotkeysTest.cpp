#include "linux/x11_Fixture.h"
#include "platform/linux/input/UserAction.h"

#include <memory>
#include <thread>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

/// Counts what other threads handed to this one: the server tells auto-repeats to nobody but the
/// holder of the grab.
class ReadCounter : public QObject {
public:
    ReadCounter() { QCoreApplication::instance()->installEventFilter(this); }

    [[nodiscard]] int count() const { return count_; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count_ += event->type() == QEvent::MetaCall ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

TEST_F(X11HotkeysTest, Press_firesWithTheExactModifiersOnly)
{
    auto const hotkey = claim(codeT, commandKey | optionKey, 7);
    ASSERT_TRUE(hotkey);
    other.tap({ keySuper, keyAlt, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 });
    EXPECT_NE(lastUserAction().time, 0u);

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
    runUntil([&] { return !fired.empty() && reads.count() > 4; });
    other.release(keyT);
    other.release(keySuper);
    EXPECT_EQ(firedUntilNow(), Ids { 7 });

    other.tap({ keySuper, keyT });
    EXPECT_EQ(firedUntilNow(), Ids { 7 });
}

TEST_F(X11HotkeysTest, StalledProgram_holdsTheKeyboardForAMomentOnly)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    OtherClient watcher;
    watcher.watchUnusedKeys();
    // No event of this thread is handled meanwhile.
    for (int round = 0; round < 3; ++round) {
        other.tap({ keySuper, keyT });
        other.tap({ keyF13 });
        while (!std::ranges::count(watcher.takePresses(), keyF13))
            std::this_thread::yield();
    }
    EXPECT_EQ(firedUntilNow(), (Ids { 7, 7, 7 }));
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
    ASSERT_EQ(
        QProcess::execute("setxkbmap", { "-layout", "dvorak,ru", "-option", "grp:caps_toggle" }),
        0);
    for (auto const* const layout : { "dvorak", "ru" }) {
        other.tap({ keySuper, keyT });
        EXPECT_EQ(firedUntilNow(), Ids { 7 }) << layout;
        other.tap({ keyCapsLock });
    }
}

TEST_F(X11HotkeysTest, MovedModifierKeys_areFollowed)
{
    auto const hotkey = claim(codeT, commandKey, 7);
    ASSERT_EQ(QProcess::execute("setxkbmap", { "-option", "altwin:swap_alt_win" }), 0);
    other.tap({ keyAlt, keyT });
    other.tap({ keySuper, keyT });
    other.tap({ keyControl, keyAlt, keyS });
    // What is pressed after a hotkey counts by the mapping of when the hotkey has been dealt with.
    runUntil([this] { return fired.size() >= 2; });
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
    runUntil([] { return hotkeyObstacles({ { codeT, commandKey } }) == Obstacles(1); });
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
}

TEST_F(X11HotkeysTest, Combination_givenBackAndClaimedAnewLosesNoPress)
{
    auto first = claim(codeT, commandKey, 7);
    auto second = claim(codeS, commandKey, 8);
    EXPECT_FALSE(claim(codeT, commandKey, 9));
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
    runUntil([this] { return !fired.empty(); });
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

} // namespace
} // namespace quillbar::platform
