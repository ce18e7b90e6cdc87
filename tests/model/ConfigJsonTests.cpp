#include "model/ConfigJson.h"

#include <gtest/gtest.h>

namespace quillbar {

namespace {

/// A record with the required keys and these members besides.
std::optional<Config> decodeWith(std::string const& members)
{
    return decodeConfig(R"({"pinned":["A","B"],"iconSymbol":"bolt.fill")" + members + "}");
}

std::string repeated(std::string const& text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace

TEST(ConfigJson, EveryField_isReadAndWhatIsUnknownIgnored)
{
    auto const config = decodeWith(R"(,
        "launchAtLogin": false, "autoRunOnLaunch": true, "onboarded": true, "permissionsShown": false,
        "menuHotkey": {"keyCode": 17, "x": {"keyCode": "no"}, "modifiers": 2304},
        "shortcutHotkeys": {"A": {"modifiers": 256, "keyCode": 5}, "": {"keyCode": -1, "modifiers": 0}},
        "launchAtLoginShortcuts": {"A": true, "gone": false},
        "groupOf": {"A": "Work", "B\n\u00e9\ud83d\ude00": ""},
        "x": [{"pinned": [1]}, [[]], "s", 1.5, true], "y": null)");
    auto expected = decodeWith("").value();
    expected.launchAtLogin = false;
    expected.autoRunOnLaunch = true;
    expected.onboarded = true;
    expected.permissionsShown = false;
    expected.menuHotkey = Hotkey { 17, 0x900 };
    expected.shortcutHotkeys = { { "A", { 5, 0x100 } }, { "", { -1, 0 } } };
    expected.launchAtLoginShortcuts = { { "A", true }, { "gone", false } };
    expected.groupOf = std::map<std::string, std::string> { { "A", "Work" }, { "B\né😀", "" } };
    EXPECT_EQ(config, expected);

    EXPECT_EQ(decodeWith(R"(,"launchAtLogin":null,"autoRunOnLaunch":null,"onboarded":null,
        "permissionsShown":null,"menuHotkey":null,"shortcutHotkeys":null,
        "launchAtLoginShortcuts":null,"groupOf":null)"),
        decodeWith(""));
}

TEST(ConfigJson, AnyMistake_failsTheWholeRecord)
{
    for (auto const* text : { "", " ", "null", "[]", "7", "{", "{}", "no JSON", R"({"pinned":[]})",
             R"({"iconSymbol":"x"})", R"({"pinned":null,"iconSymbol":"x"})",
             R"({"pinned":[],"iconSymbol":null})", R"({"pinned":[],"iconSymbol":7})",
             R"({"pinned":{},"iconSymbol":"x"})", R"({"pinned":[null],"iconSymbol":"x"})",
             R"({"pinned":[["A"]],"iconSymbol":"x"})", R"({"pinned":[],"iconSymbol":"x"} extra)",
             R"({"pinned":[],"iconSymbol":"x",})" })
        EXPECT_FALSE(decodeConfig(text)) << text;

    for (auto const* members : { R"("onboarded":1)", R"("onboarded":"true")", R"("menuHotkey":[])",
             R"("menuHotkey":{})", R"("menuHotkey":{"keyCode":17})",
             R"("menuHotkey":{"modifiers":0})", R"("menuHotkey":{"keyCode":null,"modifiers":0})",
             R"("menuHotkey":{"keyCode":"17","modifiers":0})",
             R"("menuHotkey":{"keyCode":true,"modifiers":0})", R"("shortcutHotkeys":[])",
             R"("shortcutHotkeys":{"A":null})", R"("launchAtLoginShortcuts":{"A":1})",
             R"("launchAtLoginShortcuts":[["A",true]])", R"("groupOf":{"A":null})",
             R"("groupOf":"x")", R"("x":1e400)", R"("x":"\ud800")", "\"x\":\"\xFF\"" })
        EXPECT_FALSE(decodeWith(std::string(",") + members)) << members;

    // No part of a JSON text, though the parser ends at it.
    EXPECT_FALSE(decodeConfig(std::string(R"({"pinned":[],"iconSymbol":"x"})") + '\0'));
}

TEST(ConfigJson, Numbers_areTakenExactlyOrNotAtAll)
{
    struct Case {
        char const* keyCode;
        char const* modifiers;
        std::optional<Hotkey> expected;
    };
    for (auto const& [keyCode, modifiers, expected] :
        { Case { "17.0", "4294967295", Hotkey { 17, UINT32_MAX } },
            Case { "1.7e1", "-0.0", Hotkey { 17, 0 } },
            Case { "9223372036854775807", "0", Hotkey { INT64_MAX, 0 } },
            Case { "-9223372036854775808", "0", Hotkey { INT64_MIN, 0 } },
            Case { "9223372036854775808", "0", {} }, Case { "-9223372036854775809", "0", {} },
            Case { "18446744073709551616", "0", {} }, Case { "17.5", "0", {} },
            Case { "1e300", "0", {} }, Case { "1", "4294967296", {} }, Case { "1", "-1", {} },
            Case { "1", "-1.0", {} } }) {
        auto const config = decodeWith(std::string(R"(,"menuHotkey":{"keyCode":)") + keyCode
            + R"(,"modifiers":)" + modifiers + "}");
        EXPECT_EQ(config ? config->menuHotkey : std::nullopt, expected) << keyCode << modifiers;
    }
}

TEST(ConfigJson, DeepNesting_crashesNothing)
{
    constexpr std::size_t depth = 500'000;
    EXPECT_FALSE(decodeConfig(repeated("[", depth)));
    EXPECT_TRUE(decodeWith(",\"x\":" + repeated("[", depth) + repeated("]", depth)));
    EXPECT_TRUE(decodeWith(",\"x\":" + repeated("{\"x\":", depth) + "1" + repeated("}", depth)));
}

} // namespace quillbar
