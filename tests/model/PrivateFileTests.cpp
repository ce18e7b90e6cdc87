#include "model/PrivateFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace fs = std::filesystem;

class PrivateFile : public testing::Test {
public:
    static mode_t mode(fs::path const& path)
    {
        struct stat status { };
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    test::TemporaryFolder const temporary;
    fs::path const folder = temporary.path();
};

TEST_F(PrivateFile, WhatIsMade_isForItsOwnerOnly)
{
    auto const deep = folder / "a/b/c";
    createPrivateFolder(deep);
    EXPECT_EQ(mode(folder / "a"), 0700U);
    EXPECT_EQ(mode(deep), 0700U);
    EXPECT_TRUE(writePrivateFile(deep / "file", "text"));
    EXPECT_EQ(mode(deep / "file"), 0600U);
    createPrivateFolder(deep);
    EXPECT_EQ(readFile(deep / "file"), "text");
}

TEST_F(PrivateFile, Overwriting_keepsModeAndLinksAndLeavesNothingElse)
{
    auto const file = folder / "file";
    ASSERT_TRUE(writePrivateFile(file, "text"));
    chmod(file.c_str(), 0640);
    fs::create_symlink("file", folder / "link");
    EXPECT_TRUE(writePrivateFile(folder / "link", "other"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readFile(file), "other");
    EXPECT_EQ(mode(file), 0640U);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);
}

TEST_F(PrivateFile, WithoutRoom_theOldTextStays)
{
    auto const file = folder / "file";
    ASSERT_TRUE(writePrivateFile(file, "text"));
    // Files can be no longer than that, as on a full disk.
    auto const before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited {};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    rlimit const limit { 1000, unlimited.rlim_max };
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_FALSE(writePrivateFile(file, std::string(5000, 'n')));
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(readFile(file), "text");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(PrivateFile, WhatIsNoFileOrHuge_isNotReadNorWaitedFor)
{
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_TRUE(writePrivateFile(folder / "huge", ""));
    EXPECT_EQ(readFile(folder / "huge"), "");
    ASSERT_EQ(truncate((folder / "huge").c_str(), off_t { 1 } << 40), 0);
    for (auto const& path :
        { folder / "pipe", folder / "huge", folder, folder / "missing", fs::path("/dev/zero") })
        EXPECT_EQ(readFile(path), std::nullopt) << path;
    EXPECT_FALSE(writePrivateFile(folder, "text"));
}

} // namespace quillbar
