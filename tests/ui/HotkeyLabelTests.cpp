#include "ui/HotkeyRecorder.h"

#include <gtest/gtest.h>

namespace quillbar {

TEST(HotkeyLabel, Modifiers_comeInTheirFixedOrderBeforeTheKeyOrItsNumber)
{
    struct {
        std::int64_t keyCode;
        std::uint32_t modifiers;
        char const* label;
    } const cases[] = {
        { 36, 0x1B00, "⌘⌥⌃⇧Return" },
        { 49, 0x1A00, "⌥⌃⇧Space" },
        { 17, 0x900, "⌘⌥·17" },
        { 0, 0x100, "⌘A" },
        { 53, 0xFFFFE4FF, "Esc" },
        { 1, 0, "B" },
        { 6, 0, "G" },
        { 7, 0, "·7" },
        { 4294967295, 0, "·4294967295" },
    };
    for (auto const& [keyCode, modifiers, label] : cases)
        EXPECT_EQ(HotkeyRecorder::label(keyCode, modifiers), label);
}

TEST(HotkeyLabelDeathTest, KeyCodeThatNoSystemTakes_isFatal)
{
    EXPECT_DEATH((void)HotkeyRecorder::label(-1, 0), "key code");
    EXPECT_DEATH((void)HotkeyRecorder::label(4294967296, 0), "key code");
}

} // namespace quillbar
