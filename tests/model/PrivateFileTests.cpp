#include "model/PrivateFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace fs = std::filesystem;

class PrivateFile : public testing::Test {
public:
    PrivateFile()
    {
        auto name = (fs::temp_directory_path() / "quillbar-XXXXXX").string();
        if (mkdtemp(name.data()))
            folder = name;
    }
    ~PrivateFile() override
    {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    static mode_t mode(fs::path const& path)
    {
        struct stat status { };
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    fs::path folder;
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

TEST_F(PrivateFile, Overwriting_keepsTheFileAndItsMode)
{
    auto const file = folder / "file";
    auto const link = folder / "link";
    ASSERT_TRUE(writePrivateFile(file, "a longer text than the next"));
    chmod(file.c_str(), 0640);
    fs::create_symlink("file", link);
    EXPECT_TRUE(writePrivateFile(link, std::string("sh\0rt", 5)));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readFile(file), std::string("sh\0rt", 5));
    EXPECT_EQ(mode(file), 0640U);
}

TEST_F(PrivateFile, ALinkToNowhere_bringsItsTargetAbout)
{
    fs::create_symlink("target", folder / "link");
    EXPECT_EQ(readFile(folder / "link"), std::nullopt);
    EXPECT_TRUE(writePrivateFile(folder / "link", "text"));
    EXPECT_EQ(readFile(folder / "target"), "text");
}

TEST_F(PrivateFile, WhatIsNoFile_isNeitherReadNorWrittenNorWaitedFor)
{
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (auto const& path :
        { folder / "pipe", folder, folder / "missing/file", fs::path("/dev/zero"), fs::path() }) {
        EXPECT_EQ(readFile(path), std::nullopt) << path;
        EXPECT_FALSE(writePrivateFile(path, "text")) << path;
    }
}

TEST_F(PrivateFile, AFileBeyondMeasure_isNotRead)
{
    auto const file = folder / "file";
    ASSERT_TRUE(writePrivateFile(file, ""));
    EXPECT_EQ(readFile(file), "");
    ASSERT_EQ(truncate(file.c_str(), off_t { 1 } << 40), 0);
    EXPECT_EQ(readFile(file), std::nullopt);
}

} // namespace quillbar
