#include "model/ConfigJson.h"

#include <gtest/gtest.h>

namespace quillbar {

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

} // namespace quillbar
