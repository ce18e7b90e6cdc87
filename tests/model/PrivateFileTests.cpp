#include "model/PrivateFile.h"
#include "platform/headless/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace fs = std::filesystem;

namespace {

/// Short enough for one page, and beyond it.
constexpr std::size_t lengths[] = { 0, 100, 4096, 5000, 300'000 };

/// Files can be no longer than that while it lives, as on a full disk.
class Room {
public:
    explicit Room(rlim_t size)
        : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit const limit { size, before_.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    Room(Room const&) = delete;
    Room& operator=(Room const&) = delete;
    ~Room()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    rlimit before_ {};
    void (*signal_)(int);
};

/// Root may do anything: for the lifetime of this, such a test goes on as somebody who may not, and
/// to whom the paths belong.
class Nobody {
public:
    Nobody(std::initializer_list<fs::path> paths)
    {
        constexpr uid_t nobody = 65534;
        if (geteuid() != 0)
            return;
        for (auto const& path : paths)
            EXPECT_EQ(chown(path.c_str(), nobody, getegid()), 0);
        EXPECT_EQ(seteuid(nobody), 0);
    }
    Nobody(Nobody const&) = delete;
    Nobody& operator=(Nobody const&) = delete;
    ~Nobody() { EXPECT_EQ(seteuid(getuid()), 0); }
};

} // namespace

class PrivateFile : public testing::Test {
public:
    static mode_t mode(fs::path const& path)
    {
        struct stat status { };
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    platform::headless::TemporaryFolder const temporary;
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
    for (auto const old : lengths) {
        for (auto const length : lengths) {
            ASSERT_TRUE(writePrivateFile(file, std::string(old, 'o')));
            auto const text = std::string(length, '\0');
            EXPECT_TRUE(writePrivateFile(folder / "link", text));
            EXPECT_TRUE(fs::is_symlink(folder / "link"));
            EXPECT_TRUE(readFile(file) == text) << old << " " << length;
            EXPECT_EQ(mode(file), 0640U);
            EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);
        }
    }
    fs::create_hard_link(file, folder / "second");
    for (auto const length : lengths) {
        EXPECT_TRUE(writePrivateFile(file, std::string(length, 'h')));
        EXPECT_TRUE(readFile(folder / "second") == std::string(length, 'h'));
    }
}

TEST_F(PrivateFile, WithoutRoom_theOldTextStays)
{
    auto const file = folder / "file";
    for (auto const old : lengths) {
        for (auto const length : lengths) {
            auto const oldText = std::string(old, 'o');
            auto const text = std::string(length, 'n');
            for (auto const room : { std::size_t { 0 }, old, old + 1, length / 2, length - 1 }) {
                if (room >= length)
                    continue;
                ASSERT_TRUE(writePrivateFile(file, oldText));
                Room const limit(room);
                EXPECT_FALSE(writePrivateFile(file, text)) << old << " " << length << " " << room;
                EXPECT_TRUE(readFile(file) == oldText) << old << " " << length << " " << room;
            }
            EXPECT_TRUE(writePrivateFile(file, text));
            EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
        }
    }
}

TEST_F(PrivateFile, AFolderThatIsReadOnly_keepsNoFileFromBeingOverwritten)
{
    auto const file = folder / "file";
    ASSERT_TRUE(writePrivateFile(file, "text"));
    Nobody const nobody { folder, file };
    chmod(folder.c_str(), 0500);
    for (auto const length : lengths) {
        EXPECT_TRUE(writePrivateFile(file, std::string(length, 'n')));
        EXPECT_TRUE(readFile(file) == std::string(length, 'n'));
    }
    EXPECT_FALSE(writePrivateFile(folder / "second", "text"));
    chmod(folder.c_str(), 0700);
}

TEST_F(PrivateFile, OnlyAForbiddenFile_isSetAside)
{
    auto const file = folder / "file";
    auto const aside = folder / "aside";
    EXPECT_TRUE(setAsideForbiddenFile(file, aside));
    ASSERT_TRUE(writePrivateFile(file, "text"));
    Nobody const nobody { folder, file };
    EXPECT_FALSE(setAsideForbiddenFile(file, aside));
    chmod(file.c_str(), 0200);
    chmod(folder.c_str(), 0500);
    EXPECT_FALSE(setAsideForbiddenFile(file, aside));
    EXPECT_EQ(mode(file), 0200U);
    chmod(folder.c_str(), 0700);
    EXPECT_TRUE(setAsideForbiddenFile(file, aside));
    chmod(aside.c_str(), 0600);
    EXPECT_EQ(readFile(aside), "text");
    EXPECT_FALSE(fs::exists(file));
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
