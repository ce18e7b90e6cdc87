#include "app/StatusMenu.h"

#include <benchmark/benchmark.h>

#include <string>

namespace quillbar {
namespace {

/// Pins in groups of ten, every fifth with a hotkey.
Config configWithPins(std::int64_t count)
{
    Config config;
    config.groupOf.emplace();
    config.shortcutHotkeys.emplace();
    for (std::int64_t i = 0; i < count; ++i) {
        auto const name = "Shortcut number " + std::to_string(i);
        config.pinned.push_back(name);
        config.groupOf->emplace(name, "Group " + std::to_string(i / 10));
        if (i % 5 == 0)
            config.shortcutHotkeys->emplace(
                name, Hotkey { .keyCode = 1 + i % 100, .modifiers = platform::commandKey });
    }
    return config;
}

void buildMenu(benchmark::State& state)
{
    auto const config = configWithPins(state.range(0));
    StatusMenuActions actions;
    actions.run = [](platform::MenuItem const&) {};
    for (auto _ : state) {
        auto menu = makeStatusMenu(config, actions);
        benchmark::DoNotOptimize(menu);
    }
}
BENCHMARK(buildMenu)->ArgName("pins")->Arg(10)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillbar
