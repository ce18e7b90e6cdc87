#include "platform/linux/input/VirtualKeyCodes.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace quillbar::platform
