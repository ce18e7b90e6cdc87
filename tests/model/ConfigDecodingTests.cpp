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

TEST(ConfigDecoding, EveryField_isRead)
{
    auto const config = decodeWith(R"(,
        "launchAtLogin": false, "autoRunOnLaunch": true, "onboarded": true, "permissionsShown": false,
        "menuHotkey": {"keyCode": 17, "modifiers": 2304},
        "shortcutHotkeys": {"A": {"modifiers": 256, "keyCode": 5}, "": {"keyCode": -1, "modifiers": 0}},
        "launchAtLoginShortcuts": {"A": true, "gone": false},
        "groupOf": {"A": "Work", "B\n\u00e9\ud83d\ude00": ""})");
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
}

TEST(ConfigDecoding, NullForAnOptionalKey_isAbsent)
{
    auto const config = decodeWith(R"(,"launchAtLogin":null,"autoRunOnLaunch":null,
        "onboarded":null,"permissionsShown":null,"menuHotkey":null,"shortcutHotkeys":null,
        "launchAtLoginShortcuts":null,"groupOf":null,"unknown":null)");
    EXPECT_EQ(config, decodeWith(""));
}

TEST(ConfigDecoding, UnknownKeys_areIgnoredWithAllTheyHold)
{
    auto const config = decodeWith(R"(,"x":[{"pinned":[1]},[[]],"s",1.5,-0.0,true],
        "menuHotkey":{"keyCode":1,"x":{"keyCode":"no"},"modifiers":2,"y":[null],"z":null},
        "w":{"iconSymbol":7,"groupOf":{"A":"B"}})");
    auto expected = decodeWith("");
    expected->menuHotkey = Hotkey { 1, 2 };
    EXPECT_EQ(config, expected);
}

TEST(ConfigDecoding, AnyMistake_failsTheWholeRecord)
{
    for (auto const* text : { "", " ", "null", "[]", "7", "\"text\"", "true", "{", "{}", "no JSON",
             R"({"pinned":[]})", R"({"iconSymbol":"x"})", R"({"pinned":null,"iconSymbol":"x"})",
             R"({"pinned":[],"iconSymbol":null})", R"({"pinned":[],"iconSymbol":7})",
             R"({"pinned":[],"iconSymbol":[]})", R"({"pinned":{},"iconSymbol":"x"})",
             R"({"pinned":"A","iconSymbol":"x"})", R"({"pinned":[null],"iconSymbol":"x"})",
             R"({"pinned":[["A"]],"iconSymbol":"x"})", R"({"pinned":[],"iconSymbol":"x"} extra)",
             R"({"pinned":[],"iconSymbol":"x",})", R"({'pinned':[],"iconSymbol":"x"})",
             R"([{"pinned":[],"iconSymbol":"x"}])" })
        EXPECT_FALSE(decodeConfig(text)) << text;

    for (auto const* members :
        { R"("onboarded":1)", R"("onboarded":"true")", R"("onboarded":{})", R"("menuHotkey":[])",
            R"("menuHotkey":7)", R"("menuHotkey":{})", R"("menuHotkey":{"keyCode":17})",
            R"("menuHotkey":{"modifiers":0})", R"("menuHotkey":{"keyCode":null,"modifiers":0})",
            R"("menuHotkey":{"keyCode":"17","modifiers":0})",
            R"("menuHotkey":{"keyCode":true,"modifiers":0})",
            R"("menuHotkey":{"keyCode":[17],"modifiers":0})", R"("shortcutHotkeys":[])",
            R"("shortcutHotkeys":{"A":null})", R"("shortcutHotkeys":{"A":[]})",
            R"("shortcutHotkeys":{"A":{"keyCode":1,"modifiers":2},"B":{"keyCode":3}})",
            R"("launchAtLoginShortcuts":{"A":null})", R"("launchAtLoginShortcuts":{"A":1})",
            R"("launchAtLoginShortcuts":{"A":{}})", R"("groupOf":{"A":null})",
            R"("groupOf":{"A":["x"]})", R"("groupOf":"x")", R"("pinned":null)", R"("x":1e400)",
            R"("x":01)", R"("x":"\ud800")" })
        EXPECT_FALSE(decodeWith(std::string(",") + members)) << members;
}

TEST(ConfigDecoding, Numbers_areTakenExactlyOrNotAtAll)
{
    struct Case {
        char const* keyCode;
        char const* modifiers;
        std::optional<Hotkey> expected;
    };
    for (auto const& [keyCode, modifiers, expected] :
        { Case { "17.0", "4294967295", Hotkey { 17, UINT32_MAX } },
            Case { "1.7e1", "2304.0", Hotkey { 17, 0x900 } },
            Case { "-0", "-0.0", Hotkey { 0, 0 } },
            Case { "9223372036854775807", "0", Hotkey { INT64_MAX, 0 } },
            Case { "-9223372036854775808", "0", Hotkey { INT64_MIN, 0 } },
            Case { "-9223372036854775808.0", "0", Hotkey { INT64_MIN, 0 } },
            Case { "9223372036854775808", "0", {} }, Case { "9223372036854775808.0", "0", {} },
            Case { "-9223372036854775809", "0", {} }, Case { "18446744073709551616", "0", {} },
            Case { "17.5", "0", {} }, Case { "1e300", "0", {} }, Case { "1e400", "0", {} },
            Case { "1", "4294967296", {} }, Case { "1", "4294967296.0", {} },
            Case { "1", "-1", {} }, Case { "1", "-1.0", {} }, Case { "1", "0.5", {} } }) {
        auto const config = decodeWith(std::string(R"(,"menuHotkey":{"keyCode":)") + keyCode
            + R"(,"modifiers":)" + modifiers + "}");
        EXPECT_EQ(config ? config->menuHotkey : std::nullopt, expected) << keyCode << modifiers;
    }
}

TEST(ConfigDecoding, OfEqualKeys_theLastHolds)
{
    auto const config = decodeWith(R"(,"pinned":["C"],"iconSymbol":"leaf",
        "groupOf":{"A":"1","B":"2"},"groupOf":{"A":"3","A":"4"},
        "shortcutHotkeys":{"A":{"keyCode":1,"keyCode":2,"modifiers":3},"A":{"keyCode":4,"modifiers":5}},
        "onboarded":true,"onboarded":null)");
    ASSERT_TRUE(config);
    EXPECT_EQ(config->pinned, std::vector<std::string> { "C" });
    EXPECT_EQ(config->iconSymbol, "leaf");
    EXPECT_EQ(config->groupOf, (std::map<std::string, std::string> { { std::string("A"), "4" } }));
    EXPECT_EQ(config->shortcutHotkeys, (std::map<std::string, Hotkey> { { "A", { 4, 5 } } }));
    EXPECT_EQ(config->onboarded, std::nullopt);
}

TEST(ConfigDecoding, Bytes_mustBeUtf8WithOrWithoutAByteOrderMark)
{
    std::string const valid = R"({"pinned":["é"],"iconSymbol":"x"})";
    EXPECT_TRUE(decodeConfig("\xEF\xBB\xBF" + valid));
    EXPECT_FALSE(decodeConfig("\xEF\xBB" + valid));
    EXPECT_FALSE(decodeConfig("{\"pinned\":[\"\xE9\"],\"iconSymbol\":\"x\"}"));
    EXPECT_FALSE(decodeConfig("{\"pinned\":[],\"iconSymbol\":\"x\",\"\xFF\":1}"));
    EXPECT_FALSE(decodeConfig(valid + std::string("\0", 1)));
    EXPECT_FALSE(decodeConfig(valid + std::string("\0{", 2)));
}

TEST(ConfigDecoding, DeepNesting_isRefusedWithoutRecursion)
{
    EXPECT_TRUE(decodeWith(",\"x\":" + repeated("[", 500) + repeated("]", 500)));
    for (std::size_t const depth : { 10'000U, 5'000'000U }) {
        EXPECT_FALSE(decodeConfig(repeated("[", depth) + repeated("]", depth)));
        EXPECT_FALSE(decodeWith(",\"x\":" + repeated("[", depth) + repeated("]", depth)));
        EXPECT_FALSE(
            decodeWith(",\"x\":" + repeated("{\"x\":", depth) + "1" + repeated("}", depth)));
    }
}

TEST(ConfigMigration, TheLegacySwitch_becomesOneFlagPerPin)
{
    auto migrated = [](std::string const& members) {
        auto config = decodeWith(members).value();
        migrateAutoRun(config);
        EXPECT_EQ(config.autoRunOnLaunch, decodeWith(members)->autoRunOnLaunch);
        return config.launchAtLoginShortcuts;
    };
    using Flags = std::map<std::string, bool>;
    EXPECT_EQ(migrated(R"(,"autoRunOnLaunch":true)"), (Flags { { "A", true }, { "B", true } }));
    EXPECT_EQ(migrated(R"(,"pinned":["A","A"],"autoRunOnLaunch":true)"), (Flags { { "A", true } }));
    EXPECT_EQ(migrated(R"(,"autoRunOnLaunch":true,"launchAtLoginShortcuts":{})"), Flags {});
    EXPECT_EQ(migrated(R"(,"autoRunOnLaunch":true,"pinned":[])"), std::nullopt);
    EXPECT_EQ(migrated(R"(,"autoRunOnLaunch":false)"), std::nullopt);
    EXPECT_EQ(migrated(""), std::nullopt);
}

} // namespace quillbar
