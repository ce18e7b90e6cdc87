#include "app/AppFixture.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quillbar {

namespace {

constexpr auto const* tool = QUILLBAR_SHORTCUTS_TOOL;

} // namespace

Config AppFixture::settled(Names pinned)
{
    Config config;
    config.pinned = std::move(pinned);
    config.onboarded = true;
    config.permissionsShown = true;
    return config;
}

AppDelegate& AppFixture::start(Config const& config)
{
    config.save();
    if (!hasListing_) {
        std::string listing;
        for (auto const& name : config.pinned)
            listing += name + "\n";
        setListing(listing);
    }
    app = std::make_shared<AppDelegate>();
    app->applicationDidFinishLaunching();
    return *app;
}

void AppFixture::setListing(std::optional<std::string> listing)
{
    hasListing_ = true;
    record.childScripts[{ tool, "list" }] = { .output = std::move(listing) };
}

void AppFixture::setRun(std::string const& name, headless::ChildScript const& script)
{
    record.childScripts[{ tool, "run", name }] = script;
}

platform::MenuItem const& AppFixture::item(std::string const& title) const
{
    auto const& items = record.statusItem->menu()->items;
    auto const found = std::ranges::find(items, title, &platform::MenuItem::title);
    if (found == items.end())
        throw std::runtime_error("the status menu has no item " + title);
    return *found;
}

platform::StatusButton const& AppFixture::button() const
{
    return record.statusItem->button();
}

Names AppFixture::runNames() const
{
    Names names;
    for (auto const& child : record.startedChildren)
        names.push_back(child.arguments.back());
    return names;
}

std::vector<long> AppFixture::runTimes() const
{
    std::vector<long> times;
    for (auto const& child : record.startedChildren)
        times.push_back(child.startedAt.count());
    return times;
}

} // namespace quillbar
