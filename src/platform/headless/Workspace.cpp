#include "platform/Workspace.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

struct SecuritySettings {
    bool exist = true;
    int openings = 0;
};

headless::State<std::vector<std::string>> addresses;
headless::State<SecuritySettings> securitySettings;

} // namespace

void openAddress(std::string const& address)
{
    headless::note("openAddress");
    addresses->push_back(address);
}

bool hasSecuritySettings()
{
    return securitySettings->exist;
}

void openSecuritySettings()
{
    headless::note("openSecuritySettings");
    ++securitySettings->openings;
}

namespace headless {

std::vector<std::string> const& openedAddresses()
{
    return *addresses;
}

void setHasSecuritySettings(bool haveSecuritySettings)
{
    securitySettings->exist = haveSecuritySettings;
}

int securitySettingsOpenings()
{
    return securitySettings->openings;
}

} // namespace headless

} // namespace quillbar::platform
