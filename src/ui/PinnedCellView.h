#pragma once

#include "platform/view/Button.h"
#include "platform/view/ImageView.h"
#include "platform/view/Label.h"
#include "platform/view/PopUpButton.h"
#include "ui/HotkeyRecorder.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillbar {

/// One row of the pinned table: drag handle, name, hotkey recorder, login toggle, section popup and
/// remove button. Stores nothing of its shortcut and reports every change; the table reuses it for
/// other shortcuts and then sets everything again.
class PinnedCellView : public platform::View {
public:
    /// Whether the popup offers the section by itself; the empty title means none.
    [[nodiscard]] static bool isPresetGroup(std::string_view title);

    PinnedCellView();

    /// The name of the row's shortcut, also for assistive technology. Ends a recording under way.
    void setName(std::string const& name);
    void setLogin(platform::ButtonState state) { loginButton_->setState(state); }
    /// Fills the section popup and selects the entry of the title.
    void setGroup(std::string const& title);

    [[nodiscard]] HotkeyRecorder& recorder() const { return *recorder_; }
    [[nodiscard]] platform::Button& removeButton() const { return *removeButton_; }

    std::function<void(bool isOn)> onLoginChange;
    /// Empty for no section.
    std::function<void(std::string const& title)> onGroupChange;
    /// A section that has no entry yet is wanted. May destroy the view.
    std::function<void()> onRequestCustom;

protected:
    void layout() override;

private:
    void groupChanged();

    std::shared_ptr<platform::ImageView> const dragHandle_;
    std::shared_ptr<platform::Label> const nameLabel_;
    std::shared_ptr<HotkeyRecorder> const recorder_;
    std::shared_ptr<platform::Button> const loginButton_;
    std::shared_ptr<platform::PopUpButton> const groupPopup_;
    std::shared_ptr<platform::Button> const removeButton_;
};

} // namespace quillbar
