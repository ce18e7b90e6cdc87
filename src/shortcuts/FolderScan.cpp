#include "shortcuts/FolderScan.h"

#include "shortcuts/DesktopEntry.h"
#include "shortcuts/Names.h"
#include "shortcuts/SearchPath.h"

#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <memory>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

constexpr std::string_view desktopExtension = ".desktop";
/// Entries are a few kilobytes; a larger file is something else.
constexpr std::size_t maximumEntrySize = 1 << 20;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// A shortcut whose name is not settled yet.
struct Candidate {
    Shortcut shortcut;
    /// The name that it takes when another has the same: with the whole file name.
    std::string distinctName;
};

std::optional<std::string> readEntry(int folder, char const* fileName)
{
    auto const file = openat(folder, fileName, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return std::nullopt;
    std::string text(maximumEntrySize + 1, '\0');
    std::size_t used = 0;
    ssize_t count = 0;
    while ((count = read(file, text.data() + used, text.size() - used)) > 0)
        used += static_cast<std::size_t>(count);
    close(file);
    if (count < 0 || used > maximumEntrySize)
        return std::nullopt;
    text.resize(used);
    return text;
}

class FolderScan {
public:
    FolderScan(std::string const& folder, Environment const& environment,
        std::set<std::string, std::less<>> const& hiddenFiles)
        : folder_(folder)
        , environment_(environment)
        , hiddenFiles_(hiddenFiles)
    {
    }

    FolderContents scan()
    {
        std::unique_ptr<DIR, CloseFolder> const folder(opendir(folder_.c_str()));
        if (!folder)
            return {};
        descriptor_ = dirfd(folder.get());

        struct stat status { };
        if (fstat(descriptor_, &status) != 0)
            return {};
        if (auto const reason = distrust(status, person_); reason != Distrust::None) {
            notice(folder_, reasonText(reason));
            return std::move(contents_);
        }
        while (auto const* entry = readdir(folder.get()))
            addFile(entry->d_name);
        settleNames();
        return std::move(contents_);
    }

private:
    void notice(std::string_view file, std::string_view fault)
    {
        contents_.notices.push_back("ignoring " + printable(file) + ": " + std::string(fault));
    }

    void addFile(char const* name)
    {
        std::string const fileName = name;
        struct stat status { };
        if (isLeftAside(fileName) || hiddenFiles_.contains(fileName)
            || fstatat(descriptor_, name, &status, 0) != 0 || !S_ISREG(status.st_mode))
            return;

        auto const isEntry = fileName.ends_with(desktopExtension);
        auto const path = folder_ + "/" + fileName;
        if (!isEntry && faccessat(descriptor_, name, X_OK, AT_EACCESS) != 0) {
            contents_.refused.push_back({ path });
            return;
        }
        if (auto const reason = distrust(status, person_); reason != Distrust::None) {
            contents_.refused.push_back({ path, reason });
            notice(path, reasonText(reason));
            return;
        }
        if (isEntry)
            addEntry(fileName);
        else
            addCandidate({ std::string(withoutScriptExtension(fileName)), path, {} }, fileName);
    }

    void addEntry(std::string const& fileName)
    {
        auto const path = folder_ + "/" + fileName;
        auto const text = readEntry(descriptor_, fileName.c_str());
        auto const entry = text ? parseDesktopEntry(*text, environment_.locales) : std::nullopt;
        if (!entry) {
            notice(path, "it is no desktop entry of an application");
            return;
        }
        if (entry->isHidden) {
            contents_.hiddenFiles.insert(fileName);
            return;
        }
        if (!entry->tryExec.empty() && findProgram(entry->tryExec, environment_.searchPath).empty())
            return;
        addCommand(entry->exec, *entry, { entry->name, path, {} }, fileName);
        for (auto const& action : entry->actions) {
            addCommand(action.exec, *entry, { entry->name + ": " + action.name, path, {} },
                fileName + ": " + action.name);
        }
    }

    void addCommand(std::string const& exec, DesktopEntry const& entry, Shortcut shortcut,
        std::string const& distinctName)
    {
        if (exec.empty())
            return;
        shortcut.command = DesktopCommand { exec, entry.path, entry.runsInTerminal };
        addCandidate(std::move(shortcut), distinctName);
    }

    void addCandidate(Shortcut shortcut, std::string const& distinctName)
    {
        if (isListable(shortcut.name))
            candidates_.push_back({ std::move(shortcut), distinctName });
        else
            notice(shortcut.file, "its name cannot stand in a list");
    }

    /// Gives equal names their distinct form, which may meet a third name, until all differ.
    void settleNames()
    {
        while (true) {
            std::map<std::string_view, int> counts;
            for (auto const& candidate : candidates_)
                ++counts[candidate.shortcut.name];

            std::vector<Candidate*> equals;
            for (auto& candidate : candidates_) {
                if (counts[candidate.shortcut.name] > 1
                    && candidate.shortcut.name != candidate.distinctName)
                    equals.push_back(&candidate);
            }
            if (equals.empty())
                break;
            for (auto* candidate : equals)
                candidate->shortcut.name = candidate->distinctName;
        }
        takeCandidates();
    }

    void takeCandidates()
    {
        std::set<std::string, std::less<>> names;
        for (auto& [shortcut, distinctName] : candidates_) {
            if (names.insert(shortcut.name).second)
                contents_.shortcuts.push_back(std::move(shortcut));
            else
                notice(shortcut.file, "it has the name \"" + shortcut.name + "\" twice");
        }
    }

    std::string const& folder_;
    Environment const& environment_;
    std::set<std::string, std::less<>> const& hiddenFiles_;
    Person const person_ = Person::current();
    int descriptor_ = -1;
    std::vector<Candidate> candidates_;
    FolderContents contents_;
};

} // namespace

FolderContents scanFolder(std::string const& folder, Environment const& environment,
    std::set<std::string, std::less<>> const& hiddenFiles)
{
    return FolderScan(folder, environment, hiddenFiles).scan();
}

} // namespace quillbar::shortcuts
