#include "platform/LoginEntry.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

struct Login {
    std::optional<headless::WrittenLoginEntry> entry;
    std::vector<std::string> removedLabels;
};
headless::State<Login> login;

} // namespace

void writeLoginEntry(LoginEntry const& entry, LoginSwitch loginSwitch)
{
    headless::note("writeLoginEntry");
    login->entry = { entry, loginSwitch };
}

void removeLoginEntry(std::string const& label)
{
    headless::note("removeLoginEntry");
    login->removedLabels.push_back(label);
    if (login->entry && login->entry->entry.label == label)
        login->entry.reset();
}

namespace headless {

std::optional<WrittenLoginEntry> const& loginEntry()
{
    return login->entry;
}

std::vector<std::string> const& removedLoginLabels()
{
    return login->removedLabels;
}

} // namespace headless

} // namespace quillbar::platform
