#pragma once

#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Environment.h"
#include "shortcuts/Trust.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

struct Shortcut {
    std::string name;
    /// The name that it takes when another of its folder has the same: with the whole file name.
    std::string distinctName;
    /// Absolute path of the script, program or desktop entry, as it is found in the folder.
    std::string file;
    /// What the file is when it is a link, without links, as it was judged; otherwise `file`.
    std::string target;
    /// Only for desktop entries; other files are executed themselves.
    std::shared_ptr<DesktopEntry const> entry;
    /// Which of the entry's commands this is.
    std::string exec;
};

/// A file that a person may have meant for a shortcut.
struct RefusedFile {
    std::string file;
    /// No reason: the file only lacks the permission to execute.
    Verdict verdict;
};

/// The shortcuts of all folders, found anew by each program run.
class Catalogue {
public:
    /// Reads the folders, not those inside them; missing ones count as empty.
    explicit Catalogue(Environment const& environment);

    /// Sorted by name; no name occurs twice.
    [[nodiscard]] std::vector<Shortcut> const& shortcuts() const { return shortcuts_; }
    /// One line for each file or folder that was passed over for a fault in it.
    [[nodiscard]] std::vector<std::string> const& notices() const { return notices_; }
    /// Whether every folder that exists was read.
    [[nodiscard]] bool isComplete() const { return isComplete_; }

    [[nodiscard]] Shortcut const* find(std::string_view name) const;
    /// The one whose name differs least, case and the extension of a script aside; null when none
    /// is similar.
    [[nodiscard]] Shortcut const* findNearest(std::string_view name) const;
    /// Files that are no shortcuts for what a person can mend.
    [[nodiscard]] std::vector<RefusedFile> const& refused() const { return refused_; }
    /// The file that would have this name if it were not refused, or null.
    [[nodiscard]] RefusedFile const* findRefused(std::string_view name) const;

private:
    void scan(std::string const& folder);
    void addFile(std::string const& folder, int descriptor, std::string const& fileName);
    void addEntry(Shortcut shortcut);
    void add(Shortcut shortcut);
    void mergeFound();
    void notice(std::string_view file, std::string_view fault);
    void giveUp(std::string_view folder, std::string_view fault);

    Person const person_;
    std::vector<Shortcut> shortcuts_;
    /// Those of the folder that is being read, in no order; names may occur several times.
    std::vector<Shortcut> found_;
    /// File names of entries with Hidden=true, which hide the same file names of later folders.
    std::set<std::string> hiddenFiles_;
    std::vector<RefusedFile> refused_;
    std::vector<std::string> notices_;
    bool isComplete_ = true;
};

} // namespace quillbar::shortcuts
