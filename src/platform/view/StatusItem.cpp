#include "platform/view/StatusItem.h"

#include <type_traits>
#include <utility>

namespace quillbar::platform {

namespace {

template <typename Value> bool assignIfDifferent(Value& field, std::type_identity_t<Value> value)
{
    if (field == value)
        return false;
    field = std::move(value);
    return true;
}

} // namespace

void StatusButton::setImage(Image image)
{
    if (assignIfDifferent(image_, std::move(image)))
        syncStatusButton(item_);
}

void StatusButton::setToolTip(std::string toolTip)
{
    if (assignIfDifferent(toolTip_, std::move(toolTip)))
        syncStatusButton(item_);
}

void StatusButton::setContentTintColor(std::optional<Color> color)
{
    if (assignIfDifferent(contentTintColor_, color))
        syncStatusButton(item_);
}

void StatusButton::setAlpha(double alpha)
{
    if (assignIfDifferent(alpha_, alpha))
        syncStatusButton(item_);
}

StatusItem::StatusItem()
    : menu_(std::make_shared<Menu const>())
    , native_(createNativeStatusItem(*this))
{
}

StatusItem::~StatusItem() = default;

void StatusItem::setMenu(Menu menu)
{
    menu_ = std::make_shared<Menu const>(std::move(menu));
    syncStatusMenu(*this);
}

void StatusItem::userOpenedMenu()
{
    if (auto const callback = onMenuOpen)
        callback();
}

void StatusItem::userMissedMenu()
{
    if (auto const callback = onMenuMissed)
        callback();
}

void StatusItem::systemReportedUnavailable(std::string const& explanation)
{
    if (auto const callback = onUnavailable)
        callback(explanation);
}

} // namespace quillbar::platform
