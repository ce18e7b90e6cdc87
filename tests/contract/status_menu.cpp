#include "contract/Backend.h"
#include "platform/MainQueue.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillbar::platform {
namespace {

TEST(StatusMenu, ChosenRow_isTheOneThatWasShownAndMayDestroyTheItem)
{
    test::StatusArea area;
    std::vector<std::string> seen;
    auto const row = [&](std::string const& title) {
        MenuItem made;
        made.title = title;
        made.representedObject = title + "'s object";
        made.action = [&](MenuItem const& chosen) {
            area.item.reset();
            seen.push_back(chosen.representedObject.value_or("none"));
        };
        return made;
    };
    area.item->setMenu({ {}, { row("First"), MenuItem::separator(), row("Second") } });
    area.item->onMenuOpen = [&] {
        if (!std::exchange(seen, { "open" }).empty())
            return;
        post([&] {
            area.item->setMenu({ {}, { row("Another") } });
            postDelayed(std::chrono::milliseconds(0), [&] { area.chooseRow("Second"); });
        });
    };
    area.openMenu();
    test::runUntil([&] { return !area.item; });
    EXPECT_EQ(seen, (std::vector<std::string> { "open", "Second's object" }));
}

} // namespace
} // namespace quillbar::platform
