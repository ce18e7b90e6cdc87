#include "platform/view/View.h"

#include "platform/view/Window.h"

#include <algorithm>

namespace quillbar::platform {

View::~View()
{
    for (auto const& subview : subviews_)
        subview->superview_ = nullptr;
    // A subview that is also held elsewhere outlives this view.
    for (auto const& subview : subviews_)
        subview->detach();
}

void View::setFrame(Rect frame)
{
    Rect const old = frame_;
    if (!assign(frame_, frame))
        return;
    sync();
    if (old.width != frame.width || old.height != frame.height)
        layout();
    if (!superview_)
        return;
    superview_->subviewResized(*this);
    superview_->updatePeer(*this);
}

void View::setHidden(bool isHidden)
{
    set(isHidden_, isHidden);
}
void View::setToolTip(std::string toolTip)
{
    set(toolTip_, std::move(toolTip));
}
void View::setAccessibilityLabel(std::string label)
{
    set(accessibilityLabel_, std::move(label));
}
void View::setAccessibilityDescription(std::string description)
{
    set(accessibilityDescription_, std::move(description));
}
void View::setFocusRing(FocusRing focusRing)
{
    set(focusRing_, focusRing);
}

void View::insertSubview(std::shared_ptr<View> const& subview)
{
    subview->removeFromSuperview();
    subview->superview_ = this;
    subviews_.push_back(subview);
    updatePeer(*subview);
}

void View::removeFromSuperview()
{
    if (!superview_)
        return;
    auto& siblings = superview_->subviews_;
    auto const place = std::ranges::find(siblings, this, &std::shared_ptr<View>::get);
    auto const self = *place;
    siblings.erase(place);
    superview_ = nullptr;
    detach();
}

void View::removeAllSubviews()
{
    auto const removed = std::exchange(subviews_, {});
    for (auto const& subview : removed) {
        subview->superview_ = nullptr;
        subview->detach();
    }
}

Window* View::window() const
{
    View const* root = this;
    while (root->superview_)
        root = root->superview_;
    return root->window_;
}

bool View::isDescendantOf(View const& ancestor) const
{
    for (View const* view = this; view; view = view->superview_) {
        if (view == &ancestor)
            return true;
    }
    return false;
}

bool View::isVisible() const
{
    for (View const* view = this; view; view = view->superview_) {
        if (view->isHidden_)
            return false;
    }
    return true;
}

Rect View::frameInWindow() const
{
    Rect rect { 0, 0, frame_.width, frame_.height };
    for (View const* view = this; view->superview_; view = view->superview_) {
        rect = offsetBy(rect, { view->frame_.x, view->frame_.y });
        rect = offsetBy(rect, view->superview_->contentOrigin());
    }
    return rect;
}

KeyEventResult View::keyDown(KeyEvent const&)
{
    return KeyEventResult::Pass;
}

void View::visibleRectChanged(Rect const& visibleRect)
{
    // A page above and one below are included: the next control in Tab order and the part that a
    // turn of the wheel brings into view have their peers already.
    peerBounds_ = Rect { visibleRect.x, visibleRect.y - visibleRect.height, visibleRect.width,
        3 * visibleRect.height };
    for (auto const& subview : subviews_)
        updatePeer(*subview);
}

void View::sync() const
{
    if (native_)
        syncView(*this);
}

void View::attach()
{
    if (native_)
        return;
    native_.reset(createNativeView(*this));
    syncView(*this);
    for (auto const& subview : subviews_)
        updatePeer(*subview);
}

void View::detach()
{
    if (!native_)
        return;
    for (auto const& subview : subviews_)
        subview->detach();
    native_.reset();
}

bool View::wantsPeer(View const& subview) const
{
    if (!native_)
        return false;
    if (!peerBounds_ || intersects(*peerBounds_, subview.frame_))
        return true;
    // A focused view that is scrolled out of sight keeps its peer, which has the native focus.
    auto const* const owner = window();
    auto const focused = owner ? owner->firstResponder() : nullptr;
    return focused && focused->isDescendantOf(subview);
}

void View::updatePeer(View& subview)
{
    if (wantsPeer(subview))
        subview.attach();
    else
        subview.detach();
}

std::string accessibleName(View const& view)
{
    return view.accessibilityLabel().empty() ? view.visibleText() : view.accessibilityLabel();
}

} // namespace quillbar::platform
