#include "fuzz/MenuSource.h"

namespace quillbar::testing {

namespace {

platform::MenuItem menuItem(Source& source, int depth)
{
    constexpr int deepest = 4;
    auto const flags = source.byte();
    if ((flags & 0xF) == 0xF)
        return platform::MenuItem::separator();
    platform::MenuItem result;
    result.title = source.text();
    result.isEnabled = (flags & 1) == 0;
    if ((flags & 2) != 0)
        result.action = [](platform::MenuItem const&) {};
    if ((flags & 4) != 0)
        result.representedObject = source.text();
    if ((flags & 8) != 0)
        result.keyEquivalent = { source.text(), source.byte() * 256U };
    if ((flags & 0x10) != 0)
        result.attributedTitle = platform::AttributedText { result.title, {}, {} };
    if ((flags & 0x20) != 0)
        result.image = platform::SymbolImage { "heart.fill", {}, {}, {} };
    if ((flags & 0x40) != 0 && depth < deepest)
        result.submenu = menuItems(source, depth + 1);
    return result;
}

} // namespace

Source::Source(std::uint8_t const* data, std::size_t size)
    : rest_(data, size)
{
}

std::uint8_t Source::byte()
{
    if (rest_.empty())
        return 0;
    auto const value = rest_.front();
    rest_.remove_prefix(1);
    return value;
}

std::string Source::text()
{
    auto const length = byte() % 16U;
    auto const taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return { taken.begin(), taken.end() };
}

int Source::number()
{
    std::uint32_t value = 0;
    for (auto index = 0; index < 4; ++index)
        value = value << 8 | byte();
    return static_cast<int>(value);
}

std::vector<platform::MenuItem> menuItems(Source& source, int depth)
{
    std::vector<platform::MenuItem> result;
    for (auto count = source.byte() % 6; count > 0; --count)
        result.push_back(menuItem(source, depth));
    return result;
}

} // namespace quillbar::testing
