#include "model/Config.h"
#include "model/PrivateFile.h"
#include "platform/headless/Headless.h"

#include <gtest/gtest.h>

#include <string>

namespace quillbar {

namespace headless = platform::headless;

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

class ConfigStore : public testing::Test {
public:
    ConfigStore() { headless::reset(); }
    ~ConfigStore() override { headless::reset(); }
};

TEST_F(ConfigStore, TheFile_liesInTheFirstFolderOfApplicationData)
{
    headless::setApplicationSupportFolders({ "/first", "/second" });
    EXPECT_EQ(Config::baseURL(), "/first/Quillbar");
    EXPECT_EQ(Config::fileURL(), "/first/Quillbar/config.json");
}

TEST_F(ConfigStore, WhatIsNoConfiguration_loadsAsAFreshRecordAndStays)
{
    EXPECT_EQ(Config::load(), Config());
    EXPECT_FALSE(std::filesystem::exists(Config::baseURL()));
    for (std::string const text : { "", corrupt, R"({"pinned":["A"]})" }) {
        store(text);
        EXPECT_EQ(Config::load(), Config());
        EXPECT_EQ(readFile(Config::fileURL()), text);
    }
}

TEST_F(ConfigStore, ASavedRecord_isLoaded)
{
    Config config;
    config.pinned = { "B", "A" };
    config.launchAtLogin = false;
    config.save();
    EXPECT_EQ(Config::load(), config);

    config.pinned.clear();
    config.launchAtLogin.reset();
    config.save();
    EXPECT_EQ(Config::load(), config);
    EXPECT_EQ(readFile(Config::fileURL()), R"({"iconSymbol":"heart.fill","pinned":[]})");
}

TEST_F(ConfigStore, TheMigratedRecord_reachesTheFileWithTheNextSaveOnly)
{
    std::string const text = R"({"pinned":["A"],"iconSymbol":"x","autoRunOnLaunch":true})";
    store(text);
    auto const config = Config::load();
    EXPECT_TRUE(config.launchesAtLogin("A"));
    EXPECT_EQ(readFile(Config::fileURL()), text);
    config.save();
    EXPECT_EQ(readFile(Config::fileURL()),
        R"({"autoRunOnLaunch":true,"iconSymbol":"x","launchAtLoginShortcuts":{"A":true},"pinned":["A"]})");
}

TEST_F(ConfigStore, AnUndecodableFile_isKeptAsACopyWhenItIsOverwritten)
{
    store(corrupt);
    Config().save();
    EXPECT_EQ(Config::load(), Config());
    EXPECT_EQ(readFile(copyPath()), corrupt);

    Config config;
    config.pinned = { "A" };
    config.save();
    EXPECT_EQ(readFile(copyPath()), corrupt);
}

TEST_F(ConfigStore, AFileThatWasNotThereAtTheStart_isKeptAsACopy)
{
    auto const config = Config::load();
    std::string const text = R"({"pinned":["A"],"iconSymbol":"x"})";
    store(text);
    config.save();
    EXPECT_EQ(readFile(copyPath()), text);

    EXPECT_EQ(Config::load(), config);
    store("{}");
    config.save();
    config.save();
    EXPECT_EQ(readFile(copyPath()), "{}");
}

TEST_F(ConfigStore, AnUndecodableFile_staysWhereNoCopyCanBeMade)
{
    store(corrupt);
    std::filesystem::create_directory(copyPath());
    Config().save();
    EXPECT_EQ(readFile(Config::fileURL()), corrupt);
}

TEST_F(ConfigStore, WhatCannotBeSaved_isTriedAgainUntilItIsOrSomethingElseIs)
{
    using namespace std::chrono_literals;
    Config config;
    config.pinned = { "A" };
    std::filesystem::create_directories(Config::fileURL());
    config.save();
    headless::advance(24h);
    std::filesystem::remove(Config::fileURL());
    headless::advance(10min);
    EXPECT_EQ(Config::load(), config);
    EXPECT_FALSE(headless::isWorkWaiting());

    std::filesystem::remove(Config::fileURL());
    std::filesystem::create_directories(Config::fileURL());
    Config().save();
    std::filesystem::remove(Config::fileURL());
    config.save();
    headless::advance(24h);
    EXPECT_EQ(Config::load(), config);
    EXPECT_FALSE(headless::isWorkWaiting());
}

TEST_F(ConfigStore, WithoutAFault_noCopyIsMade)
{
    Config().save();
    store("");
    Config().save();
    Config().save();
    EXPECT_FALSE(std::filesystem::exists(copyPath()));
}

TEST_F(ConfigStore, AFolderThatCannotBeMade_isSwallowed)
{
    headless::setApplicationSupportFolders({ "/dev/null/data" });
    Config().save();
    EXPECT_EQ(Config::load(), Config());
}

TEST_F(ConfigStore, NoFolderAtAll_isFatal)
{
    headless::setApplicationSupportFolders({});
    EXPECT_DEATH((void)Config::load(), "no folder");
    EXPECT_DEATH(Config().save(), "no folder");
}

} // namespace quillbar
