#include "app/StalePins.h"

#include "platform/Text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>

namespace quillbar {

namespace {

std::unordered_set<std::string_view> setOf(std::vector<std::string> const& names)
{
    return { names.begin(), names.end() };
}

std::string joinedLines(std::vector<std::string> const& lines)
{
    std::string text;
    for (auto const& line : lines)
        text.append(platform::isolated(line)).append("\n");
    if (!text.empty())
        text.pop_back();
    return text;
}

} // namespace

std::vector<std::string> missingPins(
    std::vector<std::string> const& pinned, std::vector<std::string> const& existing)
{
    auto const known = setOf(existing);
    std::vector<std::string> missing;
    std::ranges::copy_if(pinned, std::back_inserter(missing),
        [&](std::string const& name) { return !known.contains(name); });
    return missing;
}

platform::Alert stalePinsAlert(std::vector<std::string> const& missing)
{
    return { .style = platform::AlertStyle::Warning,
        .messageText = missing.size() == 1 ? "A pinned shortcut is missing"
                                           : "Some pinned shortcuts are missing",
        .informativeText = "These shortcuts were deleted from the Shortcuts app:\n\n"
            + joinedLines(missing) + "\n\nRemove them from Quillbar?",
        .buttons = { "Remove", "Keep" },
        .accessory = std::nullopt };
}

void removePins(Config& config, std::vector<std::string> const& names)
{
    auto const removed = setOf(names);
    std::erase_if(config.pinned, [&](std::string const& name) { return removed.contains(name); });
}

} // namespace quillbar
