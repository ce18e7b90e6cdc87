#include "platform/Symbols.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

using Names = std::set<std::string, std::less<>>;
headless::State<Names> missing;
headless::State<std::optional<Image>> bundled;

} // namespace

bool symbolExists(std::string_view name)
{
    return !missing->contains(name);
}

std::optional<Image> bundleImage(std::string_view, Size)
{
    return *bundled;
}

namespace headless {

void setMissingSymbols(Names names)
{
    *missing = std::move(names);
}

void setBundleImage(Image image)
{
    *bundled = std::move(image);
}

} // namespace headless

} // namespace quillbar::platform
