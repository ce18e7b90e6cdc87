#pragma once

#include "platform/SystemHotkeys.h"
#include "platform/headless/Headless.h"
#include "platform/headless/Person.h"
#include "platform/headless/Windows.h"
#include "platform/view/ScrollView.h"
#include "ui/SettingsWindowController.h"

#include <gtest/gtest.h>

namespace quillbar {

/// A settings window on a desktop without a display, and what it hands over.
class SettingsWindowFixture : public testing::Test {
protected:
    using Names = std::vector<std::string>;

    ~SettingsWindowFixture() override
    {
        controller.reset();
        platform::headless::reset();
    }

    void open(Config config, Names const& listed = { "A", "B", "C", "D" })
    {
        std::string listing;
        for (auto const& name : listed)
            listing += name + "\n";
        platform::headless::scriptChild({ QUILLBAR_SHORTCUTS_TOOL, "list" }, { .output = listing });
        controller = makeController<SettingsWindowController>(
            std::move(config), [this](Config const& record) { saved.push_back(record); });
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
        return platform::headless::find<Kind>(window(), text);
    }
    [[nodiscard]] auto table() const
    {
        return platform::headless::findOnly<platform::TableView>(window());
    }

    [[nodiscard]] Names pinned() const
    {
        Names names;
        for (auto const& label : platform::headless::findAll<platform::Label>(*table()))
            names.push_back(label->text());
        return names;
    }
    [[nodiscard]] Names available() const
    {
        Names names;
        for (auto const& scrollView : platform::headless::findAll<platform::ScrollView>(window())) {
            if (scrollView->documentView()->kind() != platform::ViewKind::View)
                continue;
            for (auto const& checkbox :
                platform::headless::findAll<platform::Button>(*scrollView->documentView()))
                names.push_back(checkbox->title());
        }
        return names;
    }
    [[nodiscard]] auto removeButton(std::size_t row) const
    {
        return platform::headless::find<platform::Button>(*table()->viewAtRow(row), "Remove");
    }
    /// Why the recorder is marked; empty when it is not.
    [[nodiscard]] std::string problem(std::string_view name) const
    {
        auto const recorder = find<HotkeyRecorder>(name);
        auto const& toolTip = recorder->toolTip();
        return recorder->image() ? toolTip.substr(toolTip.find('\n') + 1) : std::string();
    }
    void record(
        std::string_view recorder, std::uint32_t keyCode, platform::KeyModifiers modifiers) const
    {
        EXPECT_TRUE(platform::headless::click(find<HotkeyRecorder>(recorder)));
        EXPECT_TRUE(platform::headless::press(keyCode, modifiers));
    }
    Config save()
    {
        EXPECT_TRUE(platform::headless::click(find("Save")));
        platform::headless::advance(std::chrono::milliseconds(1200));
        return saved.empty() ? Config() : saved.back();
    }

    std::shared_ptr<SettingsWindowController> controller;
    std::vector<Config> saved;
};

} // namespace quillbar
