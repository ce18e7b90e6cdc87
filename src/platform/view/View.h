#pragma once

#include "platform/KeyMonitor.h"
#include "platform/view/Geometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillbar::platform {

class Window;

enum class ViewKind : std::uint8_t {
    View,
    Label,
    Button,
    PopUpButton,
    TextField,
    ImageView,
    Separator,
    ScrollView,
    TableView,
    EffectView,
};

enum class FocusRing : std::uint8_t { Default, None };

/// A backend's side of a view; each backend defines it for itself.
struct NativeView;
struct NativeViewDeleter {
    void operator()(NativeView* native) const;
};

/// A rectangle of a window, and a plain container when used as it is. Views are made with
/// std::make_shared and owned by their superview. All state lives here: the native side is made
/// when the view first appears in a shown window, and is never asked. A setter never calls back.
/// Main thread.
class View : public std::enable_shared_from_this<View> {
public:
    View()
        : View(ViewKind::View)
    {
    }
    View(View const&) = delete;
    View& operator=(View const&) = delete;
    virtual ~View();

    /// In the coordinates of the superview. Calls layout() when the size changes.
    void setFrame(Rect frame);
    void setHidden(bool isHidden);
    void setToolTip(std::string toolTip);
    /// What assistive technology calls the view; without it, the text that the view shows.
    void setAccessibilityLabel(std::string label);
    void setAccessibilityDescription(std::string description);
    void setFocusRing(FocusRing focusRing);
    /// What TableView::takeReusableView() finds the view by.
    void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }

    [[nodiscard]] ViewKind kind() const { return kind_; }
    [[nodiscard]] Rect const& frame() const { return frame_; }
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    [[nodiscard]] std::string const& toolTip() const { return toolTip_; }
    [[nodiscard]] std::string const& accessibilityLabel() const { return accessibilityLabel_; }
    [[nodiscard]] std::string const& accessibilityDescription() const
    {
        return accessibilityDescription_;
    }
    [[nodiscard]] FocusRing focusRing() const { return focusRing_; }
    [[nodiscard]] std::string const& identifier() const { return identifier_; }

    /// Puts the subview on top of the others, taking it from where it was; returns it.
    template <typename Subview>
    std::shared_ptr<Subview> addSubview(std::shared_ptr<Subview> subview)
    {
        insertSubview(subview);
        return subview;
    }
    /// May destroy the view.
    void removeFromSuperview();
    void removeAllSubviews();
    [[nodiscard]] std::vector<std::shared_ptr<View>> const& subviews() const { return subviews_; }
    [[nodiscard]] View* superview() const { return superview_; }
    /// Null outside a window.
    [[nodiscard]] Window* window() const;

    /// Whether the view is `ancestor` or stands anywhere below it.
    [[nodiscard]] bool isDescendantOf(View const& ancestor) const;
    /// Whether neither the view nor a view around it is hidden.
    [[nodiscard]] bool isVisible() const;
    /// The view's rectangle in the coordinates of its window's content.
    [[nodiscard]] Rect frameInWindow() const;

    /// Whether a person can move the keyboard focus here.
    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }
    /// The text that the view shows; empty when it shows none.
    [[nodiscard]] virtual std::string visibleText() const { return {}; }
    /// The subviews in the order in which the keyboard visits them.
    [[nodiscard]] virtual std::vector<std::shared_ptr<View>> keyOrder() const { return subviews_; }
    /// Where the subviews' coordinates begin, in the view's own.
    [[nodiscard]] virtual Point contentOrigin() const { return {}; }
    /// A key press that the focused view below this one did not use.
    virtual KeyEventResult keyDown(KeyEvent const& event);

    [[nodiscard]] NativeView* native() const { return native_.get(); }

protected:
    explicit View(ViewKind kind)
        : kind_(kind)
    {
    }

    /// Places the subviews; called whenever the size has changed.
    virtual void layout() { }
    /// The part of this view, in its own coordinates, that the scroll view around it shows.
    virtual void visibleRectChanged(Rect const& visibleRect);
    /// A subview's frame was set.
    virtual void subviewResized(View&) { }

    /// Brings the state over to the native side, if there is one.
    void sync() const;

    /// Stores the value and returns whether it differs from the old one.
    template <typename Value> static bool assign(Value& field, Value value)
    {
        if (field == value)
            return false;
        field = std::move(value);
        return true;
    }
    template <typename Value> void set(Value& field, Value value)
    {
        if (assign(field, std::move(value)))
            sync();
    }

private:
    friend class Window;
    friend class ScrollView;

    void insertSubview(std::shared_ptr<View> const& subview);
    void attach();
    void detach();
    void updatePeer(View& subview);
    [[nodiscard]] bool wantsPeer(View const& subview) const;

    ViewKind const kind_;
    Rect frame_;
    bool isHidden_ = false;
    FocusRing focusRing_ = FocusRing::Default;
    std::string toolTip_;
    std::string accessibilityLabel_;
    std::string accessibilityDescription_;
    std::string identifier_;
    View* superview_ = nullptr;
    // Set for the root of a window only.
    Window* window_ = nullptr;
    // Only subviews that reach into it have native peers; nothing means all have.
    std::optional<Rect> peerBounds_;
    std::vector<std::shared_ptr<View>> subviews_;
    std::unique_ptr<NativeView, NativeViewDeleter> native_;
};

/// What assistive technology and tests call the view: its label, else the text it shows.
[[nodiscard]] std::string accessibleName(View const& view);

/// The backend's part. A peer is made after that of the superview and destroyed before the view;
/// destroying one must be safe while it delivers an event. A sync brings all of the state over and
/// is called whenever some of it has changed, or how the scroll view around it is scrolled.
[[nodiscard]] NativeView* createNativeView(View& view);
void syncView(View const& view);

} // namespace quillbar::platform
