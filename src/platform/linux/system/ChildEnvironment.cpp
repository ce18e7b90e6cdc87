#include "platform/linux/system/ChildEnvironment.h"

#include <array>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace quillbar::platform {

namespace {

// The launch of this program, which a child would otherwise claim to be the end of.
constexpr std::array<std::string_view, 4> launchVariables { "DESKTOP_STARTUP_ID",
    "XDG_ACTIVATION_TOKEN", "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE" };

// By name, the complete `name=value` that children get; nothing where the variable was unset.
std::map<std::string, std::optional<std::string>, std::less<>>& replacedVariables()
{
    static std::map<std::string, std::optional<std::string>, std::less<>> variables;
    return variables;
}

bool isOwn(std::string_view name)
{
    for (auto const launchVariable : launchVariables) {
        if (name == launchVariable)
            return true;
    }
    return replacedVariables().contains(name);
}

} // namespace

void setOwnVariable(char const* name, char const* value)
{
    std::optional<std::string> before;
    if (auto const* old = std::getenv(name))
        before = std::string(name) + '=' + old;
    replacedVariables().try_emplace(name, std::move(before));
    ::setenv(name, value, 1);
}

std::vector<char*> childEnvironment()
{
    std::vector<char*> variables;
    for (auto** entry = environ; entry && *entry; ++entry) {
        std::string_view const text = *entry;
        if (!isOwn(text.substr(0, text.find('='))))
            variables.push_back(*entry);
    }
    for (auto& [name, before] : replacedVariables()) {
        if (before)
            variables.push_back(before->data());
    }
    variables.push_back(nullptr);
    return variables;
}

} // namespace quillbar::platform
