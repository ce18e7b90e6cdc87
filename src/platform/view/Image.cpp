#include "platform/view/Image.h"

#include "platform/Symbols.h"

#include <utility>

namespace quillbar::platform {

std::optional<Image> symbolImage(std::string name, std::string accessibilityDescription)
{
    if (!symbolExists(name))
        return std::nullopt;
    return SymbolImage {
        .name = std::move(name),
        .accessibilityDescription = std::move(accessibilityDescription),
        .size = std::nullopt,
        .tint = std::nullopt,
    };
}

} // namespace quillbar::platform
