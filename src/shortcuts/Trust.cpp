#include "shortcuts/Trust.h"

#include <unistd.h>

namespace quillbar::shortcuts {

Person Person::current()
{
    return { geteuid(), getegid() };
}

Distrust distrust(struct stat const& status, Person const& person)
{
    if (status.st_uid != person.user && status.st_uid != 0)
        return Distrust::ForeignOwner;

    auto const isPrivateGroup = status.st_gid == person.group && person.group == person.user;
    auto const othersMayWrite
        = (status.st_mode & S_IWOTH) != 0 || ((status.st_mode & S_IWGRP) != 0 && !isPrivateGroup);
    return othersMayWrite ? Distrust::WritableByOthers : Distrust::None;
}

std::string_view reasonText(Distrust reason)
{
    switch (reason) {
    case Distrust::WritableByOthers:
        return "others may write to it";
    case Distrust::ForeignOwner:
        return "it belongs to another user";
    case Distrust::None:
        break;
    }
    return {};
}

} // namespace quillbar::shortcuts
