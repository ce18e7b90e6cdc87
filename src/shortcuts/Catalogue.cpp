#include "shortcuts/Catalogue.h"

#include "shortcuts/Names.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace quillbar::shortcuts {

namespace {

/// Entries are a few kilobytes; a larger file is something else.
constexpr off_t maximumEntrySize = 1 << 20;

constexpr std::string_view unlistable = "its name cannot stand in a list";

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

Verdict judgeFolder(std::string const& folder, int descriptor, Person const& person)
{
    auto const target = resolved(folder);
    if (target != folder)
        return judgeTarget(target, person);
    struct stat status { };
    fstat(descriptor, &status);
    return judge(folder, status, person);
}

/// What remains of a name when case and the extension of a script are set aside.
std::string comparable(std::string_view name)
{
    auto const stem = withoutScriptExtension(name);
    g_autofree char* folded = g_utf8_casefold(stem.data(), static_cast<gssize>(stem.size()));
    return folded;
}

/// Gives equal names their distinct form, which may meet a third name, until all differ or are
/// distinct forms.
void settleNames(std::vector<Shortcut>& shortcuts)
{
    std::vector<Shortcut*> unsettled;
    unsettled.reserve(shortcuts.size());
    for (auto& shortcut : shortcuts)
        unsettled.push_back(&shortcut);
    // By name, the one that has it so far; null when several had it, which all changed theirs.
    std::unordered_map<std::string, Shortcut*> holders;
    auto const makeDistinct = [&unsettled](Shortcut* shortcut) {
        if (shortcut == nullptr || shortcut->name == shortcut->distinctName)
            return;
        shortcut->name = shortcut->distinctName;
        unsettled.push_back(shortcut);
    };
    while (!unsettled.empty()) {
        auto* const shortcut = unsettled.back();
        unsettled.pop_back();
        auto const [holder, isNew] = holders.try_emplace(shortcut->name, shortcut);
        if (isNew)
            continue;
        makeDistinct(std::exchange(holder->second, nullptr));
        makeDistinct(shortcut);
    }
}

} // namespace

Catalogue::Catalogue(Environment const& environment)
    : person_(currentPerson(environment.home))
{
    for (auto const& folder : environment.folders) {
        scan(folder);
        mergeFound();
    }
}

void Catalogue::scan(std::string const& folder)
{
    std::unique_ptr<DIR, CloseFolder> const stream(opendir(folder.c_str()));
    if (!stream) {
        if (errno != ENOENT && errno != ENOTDIR)
            giveUp(folder, std::strerror(errno));
        return;
    }
    auto const descriptor = dirfd(stream.get());
    if (auto const verdict = judgeFolder(folder, descriptor, person_);
        verdict.reason != Distrust::None) {
        giveUp(folder, reasonText(verdict, folder));
        return;
    }
    errno = 0;
    while (auto const* entry = readdir(stream.get())) {
        addFile(folder, descriptor, entry->d_name);
        errno = 0;
    }
    if (errno != 0)
        giveUp(folder, std::strerror(errno));
}

void Catalogue::addFile(std::string const& folder, int descriptor, std::string const& fileName)
{
    // Hidden files, the copies that editors leave, and what an earlier folder hides.
    if (fileName.starts_with('.') || fileName.ends_with('~') || hiddenFiles_.contains(fileName))
        return;
    struct stat status { };
    if (fstatat(descriptor, fileName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return;
    auto const path = folder + "/" + fileName;
    auto const isLink = S_ISLNK(status.st_mode);
    auto const target = isLink ? resolved(path) : path;
    if ((isLink && lstat(target.c_str(), &status) != 0) || !S_ISREG(status.st_mode))
        return;

    auto const isEntry = fileName.ends_with(".desktop");
    if (!isEntry && faccessat(descriptor, fileName.c_str(), X_OK, 0) != 0) {
        refused_.push_back({ path, {} });
        return;
    }
    auto const verdict = isLink ? judgeTarget(target, person_) : judge(path, status, person_);
    if (verdict.reason != Distrust::None) {
        notice(path, reasonText(verdict, path));
        refused_.push_back({ path, verdict });
        return;
    }
    if (isEntry)
        addEntry({ {}, fileName, path, target, readEntry(target, status), {} });
    else
        add({ std::string(withoutScriptExtension(fileName)), fileName, path, target, {}, {} });
}

void Catalogue::addEntry(Shortcut shortcut)
{
    if (!shortcut.entry) {
        notice(shortcut.file, "it is no desktop entry of an application");
        return;
    }
    auto const& entry = *shortcut.entry;
    auto const fileName = shortcut.distinctName;
    if (entry.isHidden) {
        hiddenFiles_.insert(fileName);
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
    shortcut.exec = entry.exec;
    if (!shortcut.exec.empty())
        add(shortcut);
    for (auto const& action : entry.actions) {
        shortcut.name = entry.name + ": " + action.name;
        shortcut.distinctName = fileName + ": " + action.name;
        shortcut.exec = action.exec;
        if (!shortcut.exec.empty())
            add(shortcut);
    }
}

void Catalogue::add(Shortcut shortcut)
{
    if (isListable(shortcut.name))
        found_.push_back(std::move(shortcut));
    else
        notice(shortcut.file, unlistable);
}

void Catalogue::mergeFound()
{
    settleNames(found_);
    std::ranges::stable_sort(found_, {}, &Shortcut::name);
    auto const earlier = static_cast<std::ptrdiff_t>(shortcuts_.size());
    std::string_view previous;
    for (auto const& shortcut : found_) {
        auto const isTwice = shortcut.name == std::exchange(previous, shortcut.name);
        if (isListable(shortcut.name) && !isTwice)
            shortcuts_.push_back(shortcut);
        else
            notice(shortcut.file,
                "the name \"" + printable(shortcut.name)
                    + (isTwice ? "\" is taken" : "\" cannot stand in a list"));
    }
    found_.clear();
    // Names that an earlier folder has already stay with it.
    std::ranges::inplace_merge(shortcuts_, shortcuts_.begin() + earlier, {}, &Shortcut::name);
    auto const hidden = std::ranges::unique(shortcuts_, {}, &Shortcut::name);
    shortcuts_.erase(hidden.begin(), hidden.end());
}

void Catalogue::notice(std::string_view file, std::string_view fault)
{
    notices_.push_back("ignoring " + printable(file) + ": " + std::string(fault));
}

void Catalogue::giveUp(std::string_view folder, std::string_view fault)
{
    isComplete_ = false;
    notice(folder, fault);
}

Shortcut const* Catalogue::find(std::string_view name) const
{
    auto const match = std::ranges::lower_bound(shortcuts_, name, {}, &Shortcut::name);
    return match != shortcuts_.end() && match->name == name ? &*match : nullptr;
}

Shortcut const* Catalogue::findNearest(std::string_view name) const
{
    if (!isListable(name))
        return nullptr;
    auto const wanted = comparable(name);
    // About one letter in three, which with long names no slip explains.
    auto best = std::min<std::size_t>(wanted.size() / 3, 8) + 1;
    Shortcut const* nearest = nullptr;
    for (auto const& shortcut : shortcuts_) {
        auto const distance = editDistance(wanted, comparable(shortcut.name), best);
        if (distance < best) {
            best = distance;
            nearest = &shortcut;
        }
    }
    return nearest;
}

RefusedFile const* Catalogue::findRefused(std::string_view name) const
{
    auto const match = std::ranges::find_if(refused_, [name](auto const& refused) {
        auto const fileName = std::string_view(refused.file).substr(refused.file.rfind('/') + 1);
        return fileName == name || withoutScriptExtension(fileName) == name;
    });
    return match == refused_.end() ? nullptr : &*match;
}

} // namespace quillbar::shortcuts
