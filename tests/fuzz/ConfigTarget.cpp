#include "fuzz/Target.h"
#include "model/ConfigJson.h"

#include <string>

namespace quillbar::testing {
namespace {

void requireRoundTrip(Config const& config)
{
    auto const text = encodeConfig(config);
    auto const again = decodeConfig(text);
    require(again.has_value(), "what is written can be read");
    require(*again == config, "what is written is read as it was");
    require(encodeConfig(*again) == text, "it is written in one way only");
}

void requireMigration(Config const& config)
{
    auto migrated = config;
    migrateAutoRun(migrated);
    requireRoundTrip(migrated);
    require(!config.launchAtLoginShortcuts || migrated == config,
        "the legacy switch changes no record that has flags");
    for (auto const& name : config.pinned) {
        require(config.launchAtLoginShortcuts || !config.autoRunOnLaunchEff()
                || migrated.launchAtLoginShortcuts->at(name),
            "the legacy switch flags every pin");
    }
    auto const once = migrated;
    migrateAutoRun(migrated);
    require(migrated == once, "a second migration changes nothing");
}

/// Names that reached a record some other way may hold any bytes.
void requireEveryNameIsKept(std::string const& name)
{
    Config config;
    config.pinned = { name, "A" };
    config.iconSymbol = name;
    config.groupOf.emplace().emplace(name, name);
    config.shortcutHotkeys.emplace().emplace(name, Hotkey { 17, 6144 });
    config.launchAtLoginShortcuts.emplace().emplace(name, true);
    auto const again = decodeConfig(encodeConfig(config));
    require(again && again->pinned.size() == 2, "every name can be saved");
    auto const isUtf8 = again->pinned.front() == name;
    require(!isUtf8 || *again == config, "a name is the same in every field");
}

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    auto const text = textOf(data, size);
    if (auto const config = quillbar::decodeConfig(text)) {
        requireRoundTrip(*config);
        requireMigration(*config);
    }
    requireEveryNameIsKept(std::string(text));
    return 0;
}
