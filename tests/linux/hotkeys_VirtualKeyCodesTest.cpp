#include "platform/linux/hotkeys/VirtualKeyCodes.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>
#include <set>

namespace quillbar::platform {
namespace {

std::set<std::uint32_t> const codesWithoutKey { 52, 66, 68, 70, 77, 108, 112, 127 };

TEST(VirtualKeyCodes, TableRoundTrip_everyCodeHasItsOwnKey)
{
    std::set<std::uint32_t> keys;
    for (std::uint32_t code = 0; code < 128; ++code) {
        auto const key = virtualKeyToEvdev(code);
        ASSERT_EQ(key.has_value(), !codesWithoutKey.contains(code)) << code;
        if (!key)
            continue;
        EXPECT_TRUE(keys.insert(*key).second) << code;
        EXPECT_EQ(evdevToVirtualKey(*key), code);
    }
    EXPECT_EQ(keys.size(), 120u);
}

TEST(VirtualKeyCodes, KeyNames_areThoseOfMacKeyboards)
{
    struct Case {
        std::uint32_t code;
        std::uint32_t key;
    };
    for (auto const& [code, key] : { Case { 0, KEY_A }, Case { 6, KEY_Z }, Case { 10, KEY_102ND },
             Case { 22, KEY_6 }, Case { 36, KEY_ENTER }, Case { 54, KEY_RIGHTMETA },
             Case { 92, KEY_KP9 }, Case { 122, KEY_F1 }, Case { 126, KEY_UP } })
        EXPECT_EQ(virtualKeyToEvdev(code), key) << code;
}

TEST(VirtualKeyCodes, ExtraKeysOfPcKeyboards_countAsTheirMacCounterparts)
{
    struct Case {
        std::uint32_t key;
        std::uint32_t code;
    };
    for (auto const& [key, code] : { Case { KEY_SYSRQ, 105 }, Case { KEY_SCROLLLOCK, 107 },
             Case { KEY_PAUSE, 113 }, Case { KEY_HELP, 114 }, Case { KEY_MUHENKAN, 102 },
             Case { KEY_KATAKANAHIRAGANA, 104 } })
        EXPECT_EQ(evdevToVirtualKey(key), code) << key;

    using Keys = std::vector<std::uint32_t>;
    EXPECT_EQ(evdevKeysFor(105), (Keys { KEY_F13, KEY_SYSRQ }));
    EXPECT_EQ(evdevKeysFor(107), (Keys { KEY_F14, KEY_SCROLLLOCK }));
    EXPECT_EQ(evdevKeysFor(113), (Keys { KEY_F15, KEY_PAUSE }));
    EXPECT_EQ(evdevKeysFor(114), (Keys { KEY_INSERT }));
    EXPECT_EQ(evdevKeysFor(52), Keys {});
}

TEST(VirtualKeyCodes, KeysThatMacsLack_haveCodesOfTheirOwn)
{
    EXPECT_EQ(evdevToVirtualKey(KEY_PLAYPAUSE), firstEvdevKeyCode + KEY_PLAYPAUSE);
    EXPECT_EQ(virtualKeyToEvdev(firstEvdevKeyCode + KEY_PLAYPAUSE), KEY_PLAYPAUSE);

    for (std::uint32_t const code : { 128u, 0xffffu, firstEvdevKeyCode, firstEvdevKeyCode + KEY_A,
             firstEvdevKeyCode + KEY_PAUSE, firstEvdevKeyCode + KEY_MAX + 1, 0xffffffffu })
        EXPECT_EQ(virtualKeyToEvdev(code), std::nullopt) << code;
    EXPECT_EQ(evdevToVirtualKey(0), std::nullopt);
    EXPECT_EQ(evdevToVirtualKey(0xffffffffu), std::nullopt);
}

} // namespace
} // namespace quillbar::platform
