#include "platform/linux/process/ChildEnvironment.h"

#include <map>
#include <optional>
#include <string>

namespace quillbar::platform {

namespace {

using Variables = std::map<std::string, std::optional<std::string>>;

/// By name, what children get in place of this program's own value; nothing where they get none.
Variables& variablesOfChildren()
{
    // The launch of this program, which a child would otherwise claim to be the end of.
    static Variables variables { { "DESKTOP_STARTUP_ID", {} }, { "XDG_ACTIVATION_TOKEN", {} },
        { "DBUS_STARTER_ADDRESS", {} }, { "DBUS_STARTER_BUS_TYPE", {} } };
    return variables;
}

} // namespace

GStrv childEnvironment()
{
    auto* environment = g_get_environ();
    for (auto const& [name, value] : variablesOfChildren()) {
        environment = value ? g_environ_setenv(environment, name.c_str(), value->c_str(), TRUE)
                            : g_environ_unsetenv(environment, name.c_str());
    }
    return environment;
}

void setOwnVariable(char const* name, char const* value)
{
    auto const* const old = g_getenv(name);
    variablesOfChildren().try_emplace(name, old ? std::optional<std::string>(old) : std::nullopt);
    g_setenv(name, value, TRUE);
}

} // namespace quillbar::platform
