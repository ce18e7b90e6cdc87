#include "model/ConfigJson.h"

#include <gtest/gtest.h>

namespace quillbar {

TEST(Config, Accessors_applyTheDefaults)
{
    Config config;
    EXPECT_TRUE(config.launchAtLoginEff());
    EXPECT_FALSE(config.autoRunOnLaunchEff());
    EXPECT_FALSE(config.onboardedEff());
    EXPECT_FALSE(config.permissionsShownEff());
    EXPECT_EQ(config.menuHotkeyEff(), (Hotkey { 17, 0x900 }));
    EXPECT_TRUE(config.shortcutHotkeysEff().empty());
    EXPECT_FALSE(config.launchesAtLogin("A"));

    config.launchAtLogin = false;
    config.menuHotkey = Hotkey::empty;
    config.launchAtLoginShortcuts = { { "A", true }, { "B", false } };
    EXPECT_FALSE(config.launchAtLoginEff());
    EXPECT_FALSE(config.menuHotkeyEff().isValid());
    EXPECT_TRUE(config.launchesAtLogin("A"));
    EXPECT_FALSE(config.launchesAtLogin("B"));
    EXPECT_FALSE(config.launchesAtLogin("a"));
}

TEST(ConfigEncoding, AFreshRecord_hasTheTwoRequiredKeysOnly)
{
    EXPECT_EQ(encodeConfig({}), R"({"iconSymbol":"heart.fill","pinned":[]})");
}

TEST(ConfigEncoding, EveryRecord_comesBackAsItWas)
{
    Config config;
    config.pinned = { "B", "A", "A", "quote \" \\ / \n \x01 é 😀 </script>", "" };
    config.iconSymbol = "";
    EXPECT_EQ(decodeConfig(encodeConfig(config)), config);

    config.launchAtLogin = false;
    config.autoRunOnLaunch = true;
    config.onboarded = false;
    config.permissionsShown = true;
    config.menuHotkey = Hotkey { INT64_MIN, UINT32_MAX };
    config.shortcutHotkeys.emplace();
    config.launchAtLoginShortcuts.emplace();
    config.groupOf.emplace();
    EXPECT_EQ(decodeConfig(encodeConfig(config)), config);

    config.shortcutHotkeys = { { "A", { INT64_MAX, 0 } }, { std::string("nul\0", 4), {} } };
    config.launchAtLoginShortcuts = { { "A", false }, { "", true } };
    config.groupOf.emplace().emplace("A", "Work");
    EXPECT_EQ(decodeConfig(encodeConfig(config)), config);
}

TEST(ConfigEncoding, BytesThatAreNoUtf8_areReplaced)
{
    Config config;
    config.pinned = { "a\xFFz" };
    config.groupOf.emplace().emplace("\xE9", "\xC3");
    auto const decoded = decodeConfig(encodeConfig(config));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->pinned, std::vector<std::string> { "a\uFFFDz" });
    EXPECT_EQ(decoded->groupOf,
        (std::map<std::string, std::string> { { std::string("\uFFFD"), "\uFFFD" } }));
}

TEST(ConfigEncoding, ThousandsOfPins_comeBack)
{
    Config config;
    config.shortcutHotkeys.emplace();
    for (int i = 0; i < 5'000; ++i) {
        config.pinned.push_back("Shortcut " + std::to_string(i));
        config.shortcutHotkeys->emplace(config.pinned.back(), Hotkey { i, 0x100 });
    }
    EXPECT_EQ(decodeConfig(encodeConfig(config)), config);
}

} // namespace quillbar
