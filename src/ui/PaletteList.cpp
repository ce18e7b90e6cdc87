#include "ui/PaletteList.h"

#include "platform/Fatal.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace quillbar {

PaletteList::PaletteList(
    std::vector<std::string> shortcuts, std::map<std::string, std::string> groups)
    : shortcuts_(std::move(shortcuts))
    , groups_(std::move(groups))
{
}

std::string PaletteList::groupOf(std::string const& name) const
{
    auto const found = groups_.find(name);
    return found == groups_.end() ? std::string() : found->second;
}

std::vector<std::string> const& PaletteList::searchForms() const
{
    if (searchForms_.size() != shortcuts_.size()) {
        searchForms_.reserve(shortcuts_.size());
        std::transform(shortcuts_.begin(), shortcuts_.end(), std::back_inserter(searchForms_),
            [](std::string const& name) { return platform::searchForm(name); });
    }
    return searchForms_;
}

PaletteFilter::PaletteFilter(std::shared_ptr<PaletteList const> list)
    : list_(std::move(list))
{
    showAll();
}

void PaletteFilter::showAll()
{
    matches_.resize(list_->shortcuts().size());
    std::iota(matches_.begin(), matches_.end(), 0U);
}

void PaletteFilter::setQuery(std::string_view query)
{
    auto form = platform::searchForm(platform::trimmed(query));
    // A name that contains the new query contains the old one too if the new query does.
    if (!platform::searchFormContains(form, query_))
        showAll();
    query_ = std::move(form);
    if (query_.empty())
        return;
    auto const& forms = list_->searchForms();
    std::erase_if(matches_,
        [&](std::uint32_t row) { return !platform::searchFormContains(forms[row], query_); });
}

std::string const& PaletteFilter::name(std::size_t index) const
{
    if (index >= matches_.size())
        platform::fatalError("the palette asks for a row that it does not list");
    return list_->shortcuts()[matches_[index]];
}

} // namespace quillbar
