#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace quillbar::shortcuts {

/// Why a file or folder does not count as the person's own.
enum class Distrust { None, WritableByOthers, ForeignOwner };

struct Person {
    uid_t user;
    gid_t group;
    /// Without links.
    std::string home;
};

/// `home` may lead through links.
[[nodiscard]] Person currentPerson(std::string const& home);

/// Only what belongs to the person or root and nobody else may change is ever run. The group may
/// write too where it is the person's private one, which by convention has the person's number, and
/// no access control list names others.
[[nodiscard]] Distrust distrust(
    struct stat const& status, bool hasAccessList, Person const& person);

struct Verdict {
    Distrust reason = Distrust::None;
    /// The file or folder at fault; empty for none.
    std::string path;
};

/// Judges a file or folder by its status alone.
[[nodiscard]] Verdict judge(
    std::string const& path, struct stat const& status, Person const& person);

/// Judges what a link leads to, a path without links, with the folders that it lies in, up to the
/// home or the root: who may write to one of these can put something else in its place.
[[nodiscard]] Verdict judgeTarget(std::string const& path, Person const& person);

/// The path without links; empty when there is nothing.
[[nodiscard]] std::string resolved(std::string const& path);

/// For example "others may write to it", with "it" for this file.
[[nodiscard]] std::string reasonText(Verdict const& verdict, std::string_view file);

} // namespace quillbar::shortcuts
