#include "fuzz/Target.h"
#include "platform/Text.h"
#include "services/ShortcutNames.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quillbar::testing {
namespace {

void requireOrder(std::vector<std::string> const& names)
{
    constexpr std::size_t mostCompared = 12;
    auto const count = std::min(names.size(), mostCompared);
    for (std::size_t later = 0; later < count; ++later) {
        for (std::size_t earlier = 0; earlier <= later; ++earlier) {
            require(!platform::isOrderedBefore(names[later], names[earlier]),
                "names stand in ascending order");
        }
    }
}

/// The names of a listing, as a listing.
std::string joined(std::vector<std::string> const& names)
{
    std::string text;
    for (auto const& name : names)
        text += name + "\n";
    return text;
}

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar;
    using namespace quillbar::testing;
    auto const text = textOf(data, size);
    auto const names = shortcutNames(text);
    require(names.empty() || platform::isValidUtf8(text), "only UTF-8 has names");
    for (auto const& name : names) {
        require(!name.empty() && platform::isValidUtf8(name), "a name is text");
        require(shortcutNames(name) == std::vector { name }, "a name is one line");
    }
    requireOrder(names);
    require(shortcutNames(joined(names)) == names, "a listing of the names has the same names");
    return 0;
}
