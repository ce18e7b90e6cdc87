#include "shortcuts/Catalogue.h"

#include "shortcuts/FolderScan.h"
#include "shortcuts/Names.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace quillbar::shortcuts {

namespace {

template <typename Element> void append(std::vector<Element>& target, std::vector<Element> elements)
{
    std::move(elements.begin(), elements.end(), std::back_inserter(target));
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
{
    auto const person = currentPerson(environment.home);
    std::set<std::string, std::less<>> hiddenFiles;
    for (auto const& folder : environment.folders) {
        auto contents = scanFolder(folder, person, hiddenFiles);
        isComplete_ = isComplete_ && contents.isRead;
        append(refused_, std::move(contents.refused));
        append(notices_, std::move(contents.notices));
        add(std::move(contents.shortcuts));
        hiddenFiles.merge(contents.hiddenFiles);
    }
}

void Catalogue::add(std::vector<Shortcut> found)
{
    settleNames(found);
    std::ranges::stable_sort(found, {}, &Shortcut::name);
    auto const earlier = static_cast<std::ptrdiff_t>(shortcuts_.size());
    std::string_view previous;
    for (auto& shortcut : found) {
        auto const isTwice = shortcut.name == std::exchange(previous, shortcut.name);
        if (isListable(shortcut.name) && !isTwice)
            shortcuts_.push_back(shortcut);
        else
            notices_.push_back("ignoring " + printable(shortcut.file) + ": the name \""
                + printable(shortcut.name)
                + (isTwice ? "\" is taken" : "\" cannot stand in a list"));
    }
    // Names that an earlier folder has already stay with it.
    std::ranges::inplace_merge(shortcuts_, shortcuts_.begin() + earlier, {}, &Shortcut::name);
    auto const hidden = std::unique(shortcuts_.begin(), shortcuts_.end(),
        [](auto const& left, auto const& right) { return left.name == right.name; });
    shortcuts_.erase(hidden, shortcuts_.end());
}

Shortcut const* Catalogue::find(std::string_view name) const
{
    auto const match = std::ranges::lower_bound(shortcuts_, name, {}, &Shortcut::name);
    return match != shortcuts_.end() && match->name == name ? &*match : nullptr;
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
