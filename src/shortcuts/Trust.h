#pragma once

#include <string_view>
#include <sys/stat.h>

namespace quillbar::shortcuts {

/// Why a file or folder does not count as the person's own.
enum class Distrust { None, WritableByOthers, ForeignOwner };

struct Person {
    uid_t user;
    gid_t group;

    [[nodiscard]] static Person current();
};

/// Only what belongs to the person or root and nobody else may change is ever run. The group may
/// write too where it is the person's private one, which by convention has the person's number.
[[nodiscard]] Distrust distrust(struct stat const& status, Person const& person);

/// For example "others may write to it".
[[nodiscard]] std::string_view reasonText(Distrust reason);

} // namespace quillbar::shortcuts
