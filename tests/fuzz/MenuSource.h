#pragma once

#include "platform/view/Menu.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::testing {

/// Takes what a menu and the calls of hosts are made of from the bytes; zeros at their end.
class Source {
public:
    Source(std::uint8_t const* data, std::size_t size);

    [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }

    std::uint8_t byte();
    /// At most 15 bytes, of any kind.
    std::string text();
    int number();

private:
    std::basic_string_view<std::uint8_t> rest_;
};

/// Rows of every kind, up to five on each of five levels.
[[nodiscard]] std::vector<platform::MenuItem> menuItems(Source& source, int depth = 0);

} // namespace quillbar::testing
