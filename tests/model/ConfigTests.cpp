#include "model/Config.h"
#include "model/PrivateFile.h"
#include "support/HeadlessTest.h"

#include <string>

namespace quillbar {

namespace {

constexpr auto corrupt = R"({"pinned":["A"],"groupOf":{"A":"Work"},})";

void store(std::string const& text)
{
    createPrivateFolder(Config::baseURL());
    ASSERT_TRUE(writePrivateFile(Config::fileURL(), text));
}

std::filesystem::path copyPath()
{
    return Config::fileURL().string() + ".unreadable";
}

} // namespace

using ConfigFile = test::HeadlessTest;

TEST_F(ConfigFile, TheMigratedRecord_reachesTheFileWithTheNextSaveOnly)
{
    std::string const text = R"({"pinned":["A"],"iconSymbol":"x","autoRunOnLaunch":true})";
    store(text);
    auto const config = Config::load();
    EXPECT_TRUE(config.launchesAtLogin("A"));
    EXPECT_EQ(readFile(Config::fileURL()), text);
    config.save();
    EXPECT_EQ(Config::load(), config);
}

TEST_F(ConfigFile, WhatIsNoConfiguration_loadsAsAFreshRecordAndIsCopied)
{
    EXPECT_EQ(Config::load(), Config());
    store("");
    EXPECT_EQ(Config::load(), Config());
    EXPECT_FALSE(std::filesystem::exists(copyPath()));
    for (std::string const text : { corrupt, R"({"pinned":["A"]})" }) {
        store(text);
        EXPECT_EQ(Config::load(), Config());
        EXPECT_EQ(readFile(Config::fileURL()), text);
        EXPECT_TRUE(Config().save());
        EXPECT_EQ(readFile(copyPath()), text);
    }
}

} // namespace quillbar
