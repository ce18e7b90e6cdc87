#pragma once

#include "platform/view/ScrollView.h"
#include "support/HeadlessTest.h"
#include "support/Person.h"
#include "ui/SettingsWindowController.h"

namespace quillbar {

/// A settings window on a desktop without a display, and what it hands over.
class SettingsWindowFixture : public test::HeadlessTest {
protected:
    using Names = std::vector<std::string>;

    ~SettingsWindowFixture() override { controller.reset(); }

    void open(Config config, Names const& listed = { "A", "B", "C", "D" })
    {
        std::string listing;
        for (auto const& name : listed)
            listing += name + "\n";
        record.childScripts[{ QUILLBAR_SHORTCUTS_TOOL, "list" }] = { .output = listing };
        controller = makeController<SettingsWindowController>(
            std::move(config), [this](Config const& edited) { saved.push_back(edited); });
        controller->window().addWillCloseObserver([this] { controller.reset(); });
        controller->showWindow();
    }

    static Config pinning(Names pinned)
    {
        Config config;
        config.pinned = std::move(pinned);
        return config;
    }

    [[nodiscard]] platform::Window& window() const { return controller->window(); }
    template <typename Kind = platform::Button> [[nodiscard]] auto find(std::string_view text) const
    {
        return test::find<Kind>(window(), text);
    }
    [[nodiscard]] auto table() const
    {
        return test::findAll<platform::TableView>(window()).front();
    }

    [[nodiscard]] Names pinned() const
    {
        Names names;
        for (auto const& label : test::findAll<platform::Label>(*table()))
            names.push_back(label->text());
        return names;
    }
    [[nodiscard]] Names available() const
    {
        Names names;
        for (auto const& scrollView : test::findAll<platform::ScrollView>(window())) {
            if (scrollView->documentView()->kind() != platform::ViewKind::View)
                continue;
            for (auto const& checkbox :
                test::findAll<platform::Button>(*scrollView->documentView()))
                names.push_back(checkbox->title());
        }
        return names;
    }
    [[nodiscard]] auto removeButton(std::size_t row) const
    {
        return test::find<platform::Button>(*table()->viewAtRow(row), "Remove");
    }
    /// Why the recorder is marked; empty when it is not.
    [[nodiscard]] std::string problem(std::string_view name) const
    {
        auto const recorder = find<HotkeyRecorder>(name);
        auto const& toolTip = recorder->toolTip();
        return recorder->image() ? toolTip.substr(toolTip.find('\n') + 1) : std::string();
    }
    void setHotkey(
        std::string_view recorder, std::uint32_t keyCode, platform::KeyModifiers modifiers) const
    {
        EXPECT_TRUE(test::click(find<HotkeyRecorder>(recorder)));
        EXPECT_TRUE(test::press(keyCode, modifiers));
    }
    Config save()
    {
        EXPECT_TRUE(test::click(find("Save")));
        headless::advance(std::chrono::milliseconds(1200));
        return saved.empty() ? Config() : saved.back();
    }

    std::shared_ptr<SettingsWindowController> controller;
    std::vector<Config> saved;
};

} // namespace quillbar
