#include "ui/HotkeyRecorder.h"

#include <gtest/gtest.h>

namespace quillbar {

TEST(HotkeyLabel, Modifiers_comeBeforeTheKeyInTheirFixedOrder)
{
    EXPECT_EQ(HotkeyRecorder::label(17, 0x900), "⌘⌥·17");
    EXPECT_EQ(HotkeyRecorder::label(49, 0x1A00), "⌥⌃⇧Space");
    EXPECT_EQ(HotkeyRecorder::label(0, 0x100), "⌘A");
    EXPECT_EQ(HotkeyRecorder::label(36, 0x1B00), "⌘⌥⌃⇧Return");
}

TEST(HotkeyLabel, Keys_haveNamesOrTheirNumber)
{
    struct {
        std::int64_t keyCode;
        char const* label;
    } const cases[] = {
        { 1, "B" },
        { 6, "G" },
        { 7, "·7" },
        { 48, "Tab" },
        { 51, "Delete" },
        { 53, "Esc" },
        { 54, "·54" },
        { 4294967295, "·4294967295" },
    };
    for (auto const& [keyCode, label] : cases)
        EXPECT_EQ(HotkeyRecorder::label(keyCode, 0), label);
}

TEST(HotkeyLabel, UnknownModifierBits_areNotShown)
{
    EXPECT_EQ(HotkeyRecorder::label(53, 0xFFFFE4FF), "Esc");
}

TEST(HotkeyLabelDeathTest, KeyCodeThatNoSystemTakes_isFatal)
{
    EXPECT_DEATH((void)HotkeyRecorder::label(-1, 0), "key code");
    EXPECT_DEATH((void)HotkeyRecorder::label(4294967296, 0), "key code");
}

} // namespace quillbar
