#include "platform/headless/Person.h"
#include "ui/PinnedCellView.h"

#include <gtest/gtest.h>

namespace quillbar {
namespace {

using platform::headless::find;
using platform::headless::findOnly;

class PinnedCell : public testing::Test {
protected:
    PinnedCell()
    {
        cell->setName("Lights");
        cell->setGroup("");
        window->setContentView(cell);
        window->makeKeyAndOrderFront();
    }

    std::shared_ptr<PinnedCellView> cell = std::make_shared<PinnedCellView>();
    std::shared_ptr<platform::PopUpButton> popUp = findOnly<platform::PopUpButton>(*cell);
    std::shared_ptr<platform::Window> window = std::make_shared<platform::Window>(
        platform::Size { 510, 30 }, platform::WindowStyle::TitledClosable);
};

TEST_F(PinnedCell, SectionPopup_offersThePresetsAndTheSectionInUse)
{
    using Titles = std::vector<std::string>;
    Titles const presets { "None", "Work", "Personal", "Custom…" };
    Titles const withGames { "None", "Work", "Personal", "Custom…", "Games" };
    struct {
        char const* group;
        char const* shown;
        Titles titles;
    } const cases[] = {
        { "", "None", presets },
        { "Work", "Work", presets },
        { "Games", "Games", withGames },
        { "None", "None", { "None", "Work", "Personal", "Custom…", "None" } },
        { "Personal", "Personal", presets },
    };
    for (auto const& [group, shown, titles] : cases) {
        cell->setGroup(group);
        Titles items;
        for (auto const& item : popUp->items())
            items.push_back(item.title);
        EXPECT_EQ(items, titles);
        EXPECT_EQ(popUp->visibleText(), shown);
        EXPECT_EQ(popUp->selectedItem()->representedObject, group);
    }
}

TEST_F(PinnedCell, ReuseForAnotherShortcut_endsTheRecording)
{
    platform::headless::click(find<HotkeyRecorder>(*cell, "Hotkey for Lights"));
    cell->setName("Doors");
    EXPECT_FALSE(cell->recorder().isRecording());
}

} // namespace
} // namespace quillbar
