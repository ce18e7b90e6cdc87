#include "support/HeadlessTest.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t signature = 0x5155494C;

class HotkeyManagerTest : public test::HeadlessTest {
protected:
    [[nodiscard]] std::function<void()> count()
    {
        return [this] { ++calls; };
    }

    int calls = 0;
};

TEST_F(HotkeyManagerTest, WhatWasRefused_isClaimedOnceItIsFreeUnlessGivenUp)
{
    HotkeyManager other;
    HotkeyManager manager;
    other.registerHotkey([] {}, 17, 0x900);
    EXPECT_EQ(manager.registerHotkey(count(), 17, 0x900, "Seventeen"), 0U);
    manager.retryRefused();
    manager.trigger(1);
    EXPECT_EQ(calls, 0);
    other.unregisterAll();
    headless::tellHotkeyObstacleObservers();
    EXPECT_THAT(record.registeredHotkeys,
        ElementsAre(headless::RegisteredHotkey { 17, 0x900, signature, 1, "Seventeen" }));
    manager.trigger(1);
    EXPECT_EQ(calls, 1);

    other.registerHotkey([] {}, 17, 0x900);
    manager.unregisterAll();
    other.unregisterAll();
    other.retryRefused();
    EXPECT_THAT(record.registeredHotkeys, IsEmpty());
}

TEST_F(HotkeyManagerTest, Action_mayReplaceEveryRegistration)
{
    std::string const captured(100, 'x');
    std::string seen;
    auto& manager = hotkeyManager();
    manager.registerHotkey(
        [&, captured] {
            manager.unregisterAll();
            manager.registerHotkey(count(), 17, 0);
            seen = captured;
        },
        17, 0);
    headless::fire(17, 0);
    EXPECT_EQ(seen, captured);
    headless::fire(17, 0);
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace quillbar
