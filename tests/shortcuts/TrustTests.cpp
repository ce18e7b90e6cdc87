#include "shortcuts/Scratch.h"
#include "shortcuts/Trust.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sys/xattr.h>

namespace quillbar::shortcuts {

TEST(Trust, OnlyTheFilesOfThePersonAndRoot_areTrusted)
{
    struct {
        uid_t owner;
        gid_t group;
        mode_t mode;
        bool hasAccessList;
        Person person;
        Distrust expected;
    } const cases[] = {
        { 1000, 1000, 0755, true, { 1000, 1000, {} }, Distrust::None },
        { 0, 0, 0755, false, { 1000, 1000, {} }, Distrust::None },
        { 1001, 1001, 0755, false, { 1000, 1000, {} }, Distrust::ForeignOwner },
        { 1000, 1000, 0757, false, { 1000, 1000, {} }, Distrust::WritableByOthers },
        { 1000, 1000, 0775, false, { 1000, 1000, {} }, Distrust::None },
        { 1000, 1000, 0775, true, { 1000, 1000, {} }, Distrust::WritableByOthers },
        { 1000, 100, 0775, false, { 1000, 1000, {} }, Distrust::WritableByOthers },
        { 1000, 100, 0775, false, { 1000, 100, {} }, Distrust::WritableByOthers },
        { 0, 50, 0775, false, { 1000, 1000, {} }, Distrust::WritableByOthers },
        { 1000, 1000, 0755, false, { 0, 0, {} }, Distrust::ForeignOwner },
    };
    for (auto const& [owner, group, mode, hasAccessList, person, expected] : cases) {
        struct stat status { };
        status.st_uid = owner;
        status.st_gid = group;
        status.st_mode = mode;
        EXPECT_EQ(distrust(status, hasAccessList, person), expected)
            << owner << ' ' << group << ' ' << mode << ' ' << hasAccessList;
    }
}

TEST(Trust, AnAccessControlList_letsOthersWriteToAFileOfThePrivateGroup)
{
    Scratch scratch;
    auto const path = scratch.script("tool");
    chmod(path.c_str(), 0775);
    auto const person = currentPerson(scratch.home);
    auto const reason = [&] { return judgeTarget(path, person).reason; };
    auto const isPrivate = person.user == person.group;
    EXPECT_EQ(reason(), isPrivate ? Distrust::None : Distrust::WritableByOthers);

    struct {
        std::uint32_t version = 2;
        struct {
            std::uint16_t tag;
            std::uint16_t rights;
            std::uint32_t who;
        } entries[5] = { { 0x01, 7, ~0U }, { 0x02, 7, 12345 }, { 0x04, 7, ~0U }, { 0x10, 7, ~0U },
            { 0x20, 5, ~0U } };
    } const list;
    ASSERT_EQ(setxattr(path.c_str(), "system.posix_acl_access", &list, sizeof list, 0), 0);
    EXPECT_EQ(reason(), Distrust::WritableByOthers);
}

} // namespace quillbar::shortcuts
