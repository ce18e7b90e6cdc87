#include "ui/PinnedCellView.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillbar {

using platform::MenuItem;
using platform::SystemColor;

namespace {

constexpr platform::Font smallFont { .size = 10 };

/// Marks the popup's entry that asks for a new section.
constexpr std::string_view customKey = "__custom__";

struct GroupPreset {
    std::string_view title;
    std::string_view value;
};
constexpr std::array<GroupPreset, 3> groupPresets { {
    { "None", "" },
    { "Work", "Work" },
    { "Personal", "Personal" },
} };

MenuItem groupItem(std::string_view title, std::string_view value)
{
    MenuItem item;
    item.title = title;
    item.representedObject = value;
    return item;
}

platform::SymbolImage symbol(std::string name, std::string accessibilityDescription)
{
    return {
        .name = std::move(name),
        .accessibilityDescription = std::move(accessibilityDescription),
        .size = std::nullopt,
        .tint = std::nullopt,
    };
}

} // namespace

bool PinnedCellView::isPresetGroup(std::string_view title)
{
    return std::ranges::find(groupPresets, title, &GroupPreset::value) != groupPresets.end();
}

PinnedCellView::PinnedCellView()
    : dragHandle_(addSubview(
        std::make_shared<platform::ImageView>(symbol("line.3.horizontal", "Drag to reorder"))))
    , nameLabel_(addSubview(std::make_shared<platform::Label>()))
    , recorder_(addSubview(std::make_shared<HotkeyRecorder>()))
    , loginButton_(
          addSubview(std::make_shared<platform::Button>(platform::ButtonStyle::CheckBox, "Login")))
    , groupPopup_(addSubview(std::make_shared<platform::PopUpButton>()))
    , removeButton_(
          addSubview(std::make_shared<platform::Button>(platform::ButtonStyle::Borderless)))
{
    dragHandle_->setContentTintColor(SystemColor::TertiaryLabel);
    dragHandle_->setScaling(platform::ImageScaling::ProportionallyUpOrDown);
    nameLabel_->setFont({ .size = 13 });
    nameLabel_->setLineBreak(platform::LineBreak::TruncateTail);
    loginButton_->setFont(smallFont);
    loginButton_->setToolTip("Open this shortcut when Quillbar starts at login");
    loginButton_->onClick
        = [this] { onLoginChange(loginButton_->state() == platform::ButtonState::On); };
    groupPopup_->setFont(smallFont);
    groupPopup_->setToolTip("Show under a section heading in the menu bar");
    groupPopup_->onSelect = [this] { groupChanged(); };
    removeButton_->setImage(symbol("xmark.circle.fill", "Remove"));
    removeButton_->setContentTintColor(SystemColor::SecondaryLabel);
    removeButton_->setToolTip("Remove from pinned");
}

void PinnedCellView::setName(std::string const& name)
{
    recorder_->cancelRecording();
    nameLabel_->setText(name);
    recorder_->setAccessibilityLabel("Hotkey for " + name);
    loginButton_->setAccessibilityLabel("Login for " + name);
    groupPopup_->setAccessibilityLabel("Section for " + name);
    removeButton_->setAccessibilityLabel("Remove");
    removeButton_->setAccessibilityDescription(name);
}

void PinnedCellView::setGroup(std::string const& title)
{
    groupPopup_->removeAllItems();
    for (auto const& preset : groupPresets)
        groupPopup_->addItem(groupItem(preset.title, preset.value));
    groupPopup_->addItem(groupItem("Custom…", customKey));
    auto const preset = std::ranges::find(groupPresets, title, &GroupPreset::value);
    auto selected = static_cast<std::size_t>(preset - groupPresets.begin());
    if (preset == groupPresets.end()) {
        groupPopup_->addItem(groupItem(title, title));
        selected = groupPopup_->items().size() - 1;
    }
    groupPopup_->selectItem(selected);
}

void PinnedCellView::layout()
{
    auto const height = frame().height;
    auto const place = [&](platform::View& view, double x, double width, double viewHeight) {
        view.setFrame({ x, (height - viewHeight) / 2, width, viewHeight });
    };
    place(*dragHandle_, 8, 14, 14);
    place(*nameLabel_, 26, 128, 16);
    place(*recorder_, 160, 128, 28);
    place(*loginButton_, 294, 58, 16);
    place(*groupPopup_, 358, 124, 22);
    place(*removeButton_, frame().width - 24, 20, 18);
}

void PinnedCellView::groupChanged()
{
    auto const value = groupPopup_->selectedItem()->representedObject.value_or(std::string());
    if (value != customKey)
        onGroupChange(value);
    else if (auto const callback = onRequestCustom)
        callback();
}

} // namespace quillbar
