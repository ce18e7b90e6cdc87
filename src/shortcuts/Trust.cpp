#include "shortcuts/Trust.h"

#include "shortcuts/Names.h"

#include <cstdlib>
#include <glib.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

bool hasAccessList(std::string const& path)
{
    return getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

} // namespace

Person currentPerson(std::string const& home)
{
    return { geteuid(), getegid(), resolved(home) };
}

Distrust distrust(struct stat const& status, bool hasAccessList, Person const& person)
{
    if (status.st_uid != person.user && status.st_uid != 0)
        return Distrust::ForeignOwner;

    // With an access control list the group's bits are the most that anybody in the list may do.
    auto const isPrivateGroup
        = status.st_gid == person.group && person.group == person.user && !hasAccessList;
    auto const othersMayWrite
        = (status.st_mode & S_IWOTH) != 0 || ((status.st_mode & S_IWGRP) != 0 && !isPrivateGroup);
    return othersMayWrite ? Distrust::WritableByOthers : Distrust::None;
}

Verdict judge(std::string const& path, struct stat const& status, Person const& person)
{
    auto const groupMayWrite = (status.st_mode & S_IWGRP) != 0;
    auto const reason = distrust(status, groupMayWrite && hasAccessList(path), person);
    return reason == Distrust::None ? Verdict {} : Verdict { reason, path };
}

Verdict judgeTarget(std::string const& path, Person const& person)
{
    for (auto part = path;;) {
        struct stat status { };
        if (lstat(part.c_str(), &status) != 0)
            return { Distrust::ForeignOwner, part };
        // In a sticky folder only its owner and that of a file can replace the file.
        auto const isSticky = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
        if (isSticky && part != path)
            status.st_mode &= ~static_cast<mode_t>(S_IWGRP | S_IWOTH);
        if (auto verdict = judge(part, status, person); verdict.reason != Distrust::None)
            return verdict;
        if (part == "/" || part == person.home)
            return {};
        g_autofree char* parent = g_path_get_dirname(part.c_str());
        part = parent;
    }
}

std::string resolved(std::string const& path)
{
    g_autofree char* result = realpath(path.c_str(), nullptr);
    return result ? result : "";
}

std::string reasonText(Verdict const& verdict, std::string_view file)
{
    auto const what = verdict.path == file ? "it" : printable(verdict.path);
    return verdict.reason == Distrust::WritableByOthers ? "others may write to " + what
                                                        : what + " belongs to another user";
}

} // namespace quillbar::shortcuts
