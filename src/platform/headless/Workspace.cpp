#include "platform/Workspace.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

headless::State<std::vector<std::string>> addresses;

} // namespace

void openAddress(std::string const& address)
{
    headless::note("openAddress");
    addresses->push_back(address);
}

namespace headless {

std::vector<std::string> const& openedAddresses()
{
    return *addresses;
}

} // namespace headless

} // namespace quillbar::platform
