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

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    if (auto const config = quillbar::decodeConfig(textOf(data, size))) {
        requireRoundTrip(*config);
        requireMigration(*config);
    }
    return 0;
}
