#include "contract/Backend.h"
#include "platform/SystemHotkeys.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillbar::platform {
namespace {

class Hotkeys : public testing::Test {
protected:
    Hotkeys()
    {
        installHotkeyHandler([this](std::uint32_t id) {
            fired.push_back(id);
            if (onFired)
                onFired();
        });
    }
    ~Hotkeys() override { installHotkeyHandler(nullptr); }

    static Token claim(KeyCombination const& combination, std::uint32_t id)
    {
        return registerSystemHotkey(combination.keyCode, combination.modifiers, 0x5155494C, id);
    }

    std::vector<std::uint32_t> firedBy(KeyCombination const& combination, std::uint32_t id)
    {
        test::pressHotkey(combination, id);
        return std::exchange(fired, {});
    }

    using Ids = std::vector<std::uint32_t>;
    KeyCombination const letter { 17, commandKey | optionKey };
    KeyCombination const other { 17, commandKey | shiftKey | controlKey };
    std::function<void()> onFired;
    Ids fired;
};

TEST_F(Hotkeys, Press_tellsTheIdAndACombinationHasOneHolder)
{
    auto first = claim(letter, 7);
    auto const second = claim(other, 8);
    EXPECT_FALSE(claim(letter, 9));
    EXPECT_EQ(firedBy(letter, 7), Ids { 7 });
    EXPECT_EQ(firedBy(other, 8), Ids { 8 });
    first.reset();
    first = claim(letter, 9);
    EXPECT_TRUE(first);
    EXPECT_EQ(firedBy(letter, 9), Ids { 9 });
}

TEST_F(Hotkeys, Handler_mayFreeAndClaimThem)
{
    auto hotkey = claim(letter, 7);
    onFired = [&] {
        hotkey.reset();
        hotkey = claim(letter, 8);
    };
    EXPECT_EQ(firedBy(letter, 7), Ids { 7 });
    EXPECT_EQ(firedBy(letter, 8), Ids { 8 });
}

} // namespace
} // namespace quillbar::platform
