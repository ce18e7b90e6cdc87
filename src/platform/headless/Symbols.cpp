#include "platform/Symbols.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

using Names = std::set<std::string, std::less<>>;
headless::State<Names> missing;

} // namespace

bool symbolExists(std::string_view name)
{
    return !missing->contains(name);
}

namespace headless {

void setMissingSymbols(Names names)
{
    *missing = std::move(names);
}

} // namespace headless

} // namespace quillbar::platform
