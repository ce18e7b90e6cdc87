#include "shortcuts/Catalogue.h"

#include "shortcuts/FolderScan.h"
#include "shortcuts/Names.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillbar::shortcuts {

namespace {

template <typename Element> void append(std::vector<Element>& target, std::vector<Element> elements)
{
    std::move(elements.begin(), elements.end(), std::back_inserter(target));
}

} // namespace

Catalogue::Catalogue(Environment const& environment)
{
    std::set<std::string, std::less<>> hiddenFiles;
    for (auto const& folder : environment.folders) {
        auto contents = scanFolder(folder, environment, hiddenFiles);
        add(std::move(contents.shortcuts));
        append(refused_, std::move(contents.refused));
        append(notices_, std::move(contents.notices));
        hiddenFiles.merge(contents.hiddenFiles);
    }
}

/// Names that an earlier folder has already stay with it.
void Catalogue::add(std::vector<Shortcut> found)
{
    std::ranges::sort(found, {}, &Shortcut::name);
    std::vector<Shortcut> all;
    std::ranges::set_union(std::make_move_iterator(shortcuts_.begin()),
        std::make_move_iterator(shortcuts_.end()), std::make_move_iterator(found.begin()),
        std::make_move_iterator(found.end()), std::back_inserter(all),
        [](auto const& left, auto const& right) { return left.name < right.name; });
    shortcuts_ = std::move(all);
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
