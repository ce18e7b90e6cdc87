#include "shortcuts/FolderScan.h"

#include "shortcuts/Names.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <glib.h>
#include <unistd.h>
#include <utility>

namespace quillbar::shortcuts {

namespace {

/// Entries are a few kilobytes; a larger file is something else.
constexpr off_t maximumEntrySize = 1 << 20;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

std::shared_ptr<DesktopEntry const> readEntry(std::string const& path, struct stat const& status)
{
    g_autofree char* text = nullptr;
    gsize size = 0;
    if (status.st_size > maximumEntrySize
        || !g_file_get_contents(path.c_str(), &text, &size, nullptr))
        return nullptr;
    auto entry = parseDesktopEntry({ text, size });
    return entry ? std::make_shared<DesktopEntry const>(std::move(*entry)) : nullptr;
}

class FolderScan {
public:
    FolderScan(std::string const& folder, Person const& person,
        std::set<std::string, std::less<>> const& hiddenFiles)
        : folder_(folder)
        , person_(person)
        , hiddenFiles_(hiddenFiles)
    {
    }

    FolderContents scan()
    {
        std::unique_ptr<DIR, CloseFolder> const folder(opendir(folder_.c_str()));
        if (!folder) {
            if (errno != ENOENT && errno != ENOTDIR)
                giveUp(std::strerror(errno));
            return std::move(contents_);
        }
        descriptor_ = dirfd(folder.get());
        if (auto const verdict = judgeFolder(); verdict.reason != Distrust::None) {
            giveUp(reasonText(verdict, folder_));
            return std::move(contents_);
        }
        errno = 0;
        while (auto const* entry = readdir(folder.get())) {
            addFile(entry->d_name);
            errno = 0;
        }
        if (errno != 0)
            giveUp(std::strerror(errno));
        return std::move(contents_);
    }

private:
    void notice(std::string_view file, std::string_view fault)
    {
        contents_.notices.push_back("ignoring " + printable(file) + ": " + std::string(fault));
    }

    void giveUp(std::string_view fault)
    {
        contents_.isRead = false;
        notice(folder_, fault);
    }

    [[nodiscard]] Verdict judgeFolder() const
    {
        auto const target = resolved(folder_);
        if (target != folder_)
            return judgeTarget(target, person_);
        struct stat status { };
        fstat(descriptor_, &status);
        return judge(folder_, status, person_);
    }

    void addFile(std::string const& fileName)
    {
        // Hidden files, the copies that editors leave, and what an earlier folder hides.
        if (fileName.starts_with('.') || fileName.ends_with('~') || hiddenFiles_.contains(fileName))
            return;
        struct stat status { };
        if (fstatat(descriptor_, fileName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return;
        auto const path = folder_ + "/" + fileName;
        auto const isLink = S_ISLNK(status.st_mode);
        auto const target = isLink ? resolved(path) : path;
        if ((isLink && lstat(target.c_str(), &status) != 0) || !S_ISREG(status.st_mode))
            return;

        auto const isEntry = fileName.ends_with(".desktop");
        if (!isEntry && faccessat(descriptor_, fileName.c_str(), X_OK, 0) != 0) {
            contents_.refused.push_back({ path, {} });
            return;
        }
        auto const verdict = isLink ? judgeTarget(target, person_) : judge(path, status, person_);
        if (verdict.reason != Distrust::None) {
            notice(path, reasonText(verdict, path));
            contents_.refused.push_back({ path, verdict });
            return;
        }
        if (isEntry)
            addEntry({ {}, fileName, path, target, readEntry(target, status), {} });
        else
            add({ std::string(withoutScriptExtension(fileName)), fileName, path, target, {}, {} });
    }

    void addEntry(Shortcut shortcut)
    {
        if (!shortcut.entry) {
            notice(shortcut.file, "it is no desktop entry of an application");
            return;
        }
        auto const& entry = *shortcut.entry;
        auto const fileName = shortcut.distinctName;
        if (entry.isHidden) {
            contents_.hiddenFiles.insert(fileName);
            return;
        }
        if (!entry.tryExec.empty() && findProgram(entry.tryExec).empty())
            return;
        // Once, not for each action: its name begins those of all actions.
        if (!isListable(entry.name)) {
            notice(shortcut.file, unlistable);
            return;
        }
        shortcut.name = entry.name;
        addCommand(shortcut, entry.exec);
        for (auto const& action : entry.actions) {
            shortcut.name = entry.name + ": " + action.name;
            shortcut.distinctName = fileName + ": " + action.name;
            addCommand(shortcut, action.exec);
        }
    }

    void addCommand(Shortcut shortcut, std::string const& exec)
    {
        shortcut.exec = exec;
        if (!exec.empty())
            add(std::move(shortcut));
    }

    void add(Shortcut shortcut)
    {
        if (isListable(shortcut.name))
            contents_.shortcuts.push_back(std::move(shortcut));
        else
            notice(shortcut.file, unlistable);
    }

    static constexpr std::string_view unlistable = "its name cannot stand in a list";

    std::string const& folder_;
    Person const& person_;
    std::set<std::string, std::less<>> const& hiddenFiles_;
    int descriptor_ = -1;
    FolderContents contents_;
};

} // namespace

FolderContents scanFolder(std::string const& folder, Person const& person,
    std::set<std::string, std::less<>> const& hiddenFiles)
{
    return FolderScan(folder, person, hiddenFiles).scan();
}

} // namespace quillbar::shortcuts
