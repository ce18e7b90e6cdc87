#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar {

/// The pinned shortcuts that palettes search, shared by every palette that is opened on the same
/// configuration. Names are folded once, on the first search. Main thread.
class PaletteList {
public:
    PaletteList(std::vector<std::string> shortcuts, std::map<std::string, std::string> groups);

    [[nodiscard]] std::vector<std::string> const& shortcuts() const { return shortcuts_; }
    /// Empty when the shortcut has none.
    [[nodiscard]] std::string groupOf(std::string const& name) const;

    /// The names' search forms, in the order of shortcuts().
    [[nodiscard]] std::vector<std::string> const& searchForms() const;

private:
    std::vector<std::string> const shortcuts_;
    std::map<std::string, std::string> const groups_;
    mutable std::vector<std::string> searchForms_;
};

/// The part of a list that a query leaves, as rising positions in the list.
class PaletteFilter {
public:
    /// Starts with the whole list.
    explicit PaletteFilter(std::shared_ptr<PaletteList const> list);

    /// Keeps the names that contain the query, regardless of case and of blanks at its ends.
    void setQuery(std::string_view query);

    [[nodiscard]] std::size_t count() const { return matches_.size(); }
    [[nodiscard]] bool isEmpty() const { return matches_.empty(); }
    /// Ends the program for an index that is not below count().
    [[nodiscard]] std::string const& name(std::size_t index) const;

private:
    void showAll();

    std::shared_ptr<PaletteList const> const list_;
    std::vector<std::uint32_t> matches_;
    // The search form of the query that gave the matches.
    std::string query_;
};

} // namespace quillbar
