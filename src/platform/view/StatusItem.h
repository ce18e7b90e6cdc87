#pragma once

#include "platform/view/Color.h"
#include "platform/view/Image.h"
#include "platform/view/Menu.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillbar::platform {

class StatusItem;

/// A backend's side of a status item; each backend defines it for itself.
struct NativeStatusItem;
struct NativeStatusItemDeleter {
    void operator()(NativeStatusItem* native) const;
};

/// What the status area shows of a status item. Owned by its StatusItem; main thread.
class StatusButton {
public:
    explicit StatusButton(StatusItem& item)
        : item_(item)
    {
    }
    StatusButton(StatusButton const&) = delete;
    StatusButton& operator=(StatusButton const&) = delete;
    ~StatusButton() = default;

    void setImage(Image image);
    void setToolTip(std::string toolTip);
    /// Nothing leaves the colour to the system.
    void setContentTintColor(std::optional<Color> color);
    /// From 0 (clear) to 1; the change may be animated.
    void setAlpha(double alpha);

    [[nodiscard]] std::optional<Image> const& image() const { return image_; }
    [[nodiscard]] std::string const& toolTip() const { return toolTip_; }
    [[nodiscard]] std::optional<Color> const& contentTintColor() const { return contentTintColor_; }
    [[nodiscard]] double alpha() const { return alpha_; }

private:
    StatusItem& item_;
    std::optional<Image> image_;
    std::string toolTip_;
    std::optional<Color> contentTintColor_;
    double alpha_ = 1;
};

/// A square item in the system's status area, shown as long as this object exists. Main thread.
class StatusItem {
public:
    StatusItem();
    StatusItem(StatusItem const&) = delete;
    StatusItem& operator=(StatusItem const&) = delete;
    ~StatusItem();

    [[nodiscard]] StatusButton& button() { return button_; }
    [[nodiscard]] StatusButton const& button() const { return button_; }

    /// Replaces the menu that a click opens.
    void setMenu(Menu menu);
    [[nodiscard]] std::shared_ptr<Menu const> const& menu() const { return menu_; }

    /// Called when the person opens the menu, perhaps more than once for one opening.
    std::function<void()> onMenuOpen;
    void userOpenedMenu();

    /// Called when the person asks for the menu where nothing can show it.
    std::function<void()> onMenuMissed;
    void userMissedMenu();

    /// Called when nothing has shown the item for some time. The explanation says so, and how the
    /// program is reached and quit without it, as sentences in the system's words.
    std::function<void(std::string const& explanation)> onUnavailable;
    void systemReportedUnavailable(std::string const& explanation);

    [[nodiscard]] NativeStatusItem* native() const { return native_.get(); }

private:
    StatusButton button_ { *this };
    std::shared_ptr<Menu const> menu_;
    std::unique_ptr<NativeStatusItem, NativeStatusItemDeleter> native_;
};

/// The backend's part. The item outlives its native side, and a sync brings all of the button or
/// the whole menu over; both are called only after creation.
[[nodiscard]] NativeStatusItem* createNativeStatusItem(StatusItem& item);
void syncStatusButton(StatusItem const& item);
void syncStatusMenu(StatusItem const& item);

} // namespace quillbar::platform
