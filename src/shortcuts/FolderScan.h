#pragma once

#include "shortcuts/Catalogue.h"

#include <set>
#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// What one folder holds.
struct FolderContents {
    /// False when there is a folder that cannot be read or is not trusted.
    bool isRead = true;
    /// In no order; names may occur several times.
    std::vector<Shortcut> shortcuts;
    /// File names of entries that say they are deleted, which goes for later folders as well.
    std::set<std::string, std::less<>> hiddenFiles;
    std::vector<RefusedFile> refused;
    std::vector<std::string> notices;
};

/// Reads one folder, not those inside it, passing over the files of these names.
[[nodiscard]] FolderContents scanFolder(std::string const& folder, Person const& person,
    std::set<std::string, std::less<>> const& hiddenFiles);

} // namespace quillbar::shortcuts
