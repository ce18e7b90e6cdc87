#include "platform/view/Window.h"

#include "platform/view/Button.h"
#include "platform/view/ScrollView.h"

#include <algorithm>

namespace quillbar::platform {

namespace {

using Views = std::vector<std::shared_ptr<View>>;

void collectKeyViews(std::shared_ptr<View> const& view, Views& found)
{
    if (view->isHidden())
        return;
    if (view->acceptsFirstResponder())
        found.push_back(view);
    for (auto const& subview : view->keyOrder())
        collectKeyViews(subview, found);
}

/// Which way a key moves the focus through the controls; 0 for other keys. Arrows do so where the
/// focused control has no use of its own for them.
int focusStep(KeyEvent const& event, View const* focused)
{
    if (event.keyCode == key::tab && (event.modifiers & ~shiftKey) == 0)
        return event.modifiers == shiftKey ? -1 : 1;
    bool const isButton = focused && focused->kind() == ViewKind::Button;
    bool const isPopUp = focused && focused->kind() == ViewKind::PopUpButton;
    if (event.modifiers != 0 || (!isButton && !isPopUp))
        return 0;
    if (event.keyCode == key::leftArrow || (isButton && event.keyCode == key::upArrow))
        return -1;
    bool const isDown = isButton && event.keyCode == key::downArrow;
    return event.keyCode == key::rightArrow || isDown ? 1 : 0;
}

std::shared_ptr<View> defaultButtonIn(std::shared_ptr<View> const& view)
{
    if (view->isHidden())
        return nullptr;
    if (view->kind() == ViewKind::Button) {
        auto const& button = static_cast<Button const&>(*view);
        if (button.keyEquivalent() == ButtonKey::Return)
            return view;
    }
    for (auto const& subview : view->subviews()) {
        if (auto button = defaultButtonIn(subview))
            return button;
    }
    return nullptr;
}

} // namespace

template <typename Value> void Window::set(Value& field, Value value)
{
    if (field == value)
        return;
    field = std::move(value);
    sync();
}

Window::Window(WindowKind kind, Size contentSize, WindowStyle style)
    : kind_(kind)
    , style_(style)
    , contentSize_(contentSize)
    , contentView_(std::make_shared<View>())
{
    contentView_->window_ = this;
    contentView_->setFrame({ 0, 0, contentSize_.width, contentSize_.height });
}

Window::~Window()
{
    contentView_->detach();
    contentView_->window_ = nullptr;
}

void Window::setTitle(std::string title)
{
    set(title_, std::move(title));
}
void Window::setLevel(WindowLevel level)
{
    set(level_, level);
}
void Window::setBackground(WindowBackground background)
{
    set(background_, background);
}
void Window::setHasShadow(bool hasShadow)
{
    set(hasShadow_, hasShadow);
}
void Window::setMovableByBackground(bool isMovable)
{
    set(isMovableByBackground_, isMovable);
}

void Window::center()
{
    isCentered_ = true;
    if (native_)
        centerNativeWindow(*this);
}

void Window::makeKeyAndOrderFront()
{
    if (!native_) {
        native_.reset(createNativeWindow(*this));
        contentView_->attach();
    }
    isVisible_ = true;
    sync();
    raiseNativeWindow(*this);
}

void Window::orderOut()
{
    isKeyWindow_ = false;
    set(isVisible_, false);
}

void Window::close()
{
    auto const self = weak_from_this().lock();
    if (std::exchange(isClosing_, true))
        return;
    orderOut();
    for (auto const observers = willCloseObservers_; auto const& observer : observers)
        observer();
    if (self)
        isClosing_ = false;
}

void Window::addWillCloseObserver(std::function<void()> observer)
{
    willCloseObservers_.push_back(std::move(observer));
}

void Window::addDidBecomeKeyObserver(std::function<void()> observer)
{
    didBecomeKeyObservers_.push_back(std::move(observer));
}

void Window::userChangedKey(bool isKeyWindow)
{
    if (std::exchange(isKeyWindow_, isKeyWindow) || !isKeyWindow)
        return;
    for (auto const observers = didBecomeKeyObservers_; auto const& observer : observers)
        observer();
}

void Window::makeFirstResponder(std::shared_ptr<View> const& view)
{
    userFocused(view);
    if (native_)
        syncFirstResponder(*this);
}

std::shared_ptr<View> Window::firstResponder() const
{
    auto view = firstResponder_.lock();
    return view && view->window() == this ? view : nullptr;
}

void Window::userFocused(std::shared_ptr<View> const& view)
{
    firstResponder_ = view;
    // A view that is scrolled away has no peers; the focus needs them.
    for (auto* shown = view.get(); shown && shown->superview(); shown = shown->superview())
        shown->superview()->updatePeer(*shown);
}

KeyEventResult Window::userPressedKey(KeyEvent const& event)
{
    auto const self = weak_from_this().lock();
    if (performKeyEquivalent(event) == KeyEventResult::Consume)
        return KeyEventResult::Consume;
    auto view = firstResponder();
    while (view) {
        if (view->keyDown(event) == KeyEventResult::Consume)
            return KeyEventResult::Consume;
        view = view->superview() ? view->superview()->weak_from_this().lock() : nullptr;
    }
    return KeyEventResult::Pass;
}

KeyEventResult Window::userPressedFocusKey(KeyEvent const& event)
{
    auto const step = focusStep(event, firstResponder().get());
    if (step == 0)
        return KeyEventResult::Pass;
    moveFocus(step);
    return KeyEventResult::Consume;
}

KeyEventResult Window::performKeyEquivalent(KeyEvent const& event)
{
    if (event.modifiers != 0
        || (event.keyCode != key::returnKey && event.keyCode != key::keypadEnter))
        return KeyEventResult::Pass;
    auto button = defaultButtonIn(contentView_);
    if (!button)
        button = firstResponder();
    if (!button || button->kind() != ViewKind::Button || !button->acceptsFirstResponder())
        return KeyEventResult::Pass;
    static_cast<Button&>(*button).userClicked();
    return KeyEventResult::Consume;
}

void Window::moveFocus(int step)
{
    Views order;
    collectKeyViews(contentView_, order);
    if (order.empty())
        return;
    auto const count = static_cast<std::ptrdiff_t>(order.size());
    auto const current = std::ranges::find(order, firstResponder());
    auto const before = step > 0 ? std::ptrdiff_t(-1) : count;
    auto const index = current == order.end() ? before : current - order.begin();
    auto const next = order[static_cast<std::size_t>((index + step + count) % count)];
    scrollToVisible(*next);
    makeFirstResponder(next);
}

void Window::sync() const
{
    if (native_)
        syncWindow(*this);
}

} // namespace quillbar::platform
