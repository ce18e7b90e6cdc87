#include "platform/linux/widgets/NativeView.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/widgets/WindowPeer.h"
#include "platform/view/Control.h"

#include <QTextDocument>

#include <cmath>

namespace quillbar::platform {

namespace {

QRect placeOf(View const& view)
{
    if (!view.superview())
        return roundedRect(view.frame()).translated(0, -view.window()->native()->offset());
    auto const origin = view.superview()->contentOrigin();
    auto const place = roundedRect(offsetBy(view.frame(), origin));
    auto& superview = *view.superview()->native();
    return &superview.host() == &superview.widget() ? place
                                                    : place.translated(-superview.host().pos());
}

bool isOn(View const& view)
{
    auto const* const control = dynamic_cast<Control const*>(&view);
    return !control || control->isEnabled();
}

template <typename Value, typename Read, typename Write>
void update(QWidget& widget, Value const& value, Read read, Write write)
{
    if ((widget.*read)() != value)
        (widget.*write)(value);
}

void syncCommon(View const& view, QWidget& widget)
{
    update(widget, placeOf(view), &QWidget::geometry,
        static_cast<void (QWidget::*)(QRect const&)>(&QWidget::setGeometry));
    update(widget, isOn(view), &QWidget::isEnabled, &QWidget::setEnabled);
    update(
        widget, plainToolTip(toQString(view.toolTip())), &QWidget::toolTip, &QWidget::setToolTip);
    update(widget, toQString(accessibleName(view)), &QWidget::accessibleName,
        &QWidget::setAccessibleName);
    auto const& help = view.accessibilityDescription();
    update(widget, toQString(help.empty() ? view.toolTip() : help), &QWidget::accessibleDescription,
        &QWidget::setAccessibleDescription);
    update(widget, view.isHidden(), &QWidget::isHidden, &QWidget::setHidden);
}

} // namespace

QRect roundedRect(Rect const& rect)
{
    auto const rounded = [](double value) { return static_cast<int>(std::lround(value)); };
    return { QPoint(rounded(rect.x), rounded(rect.y)),
        QPoint(rounded(rect.x + rect.width) - 1, rounded(rect.y + rect.height) - 1) };
}

QString plainToolTip(QString const& text)
{
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

NativeView* nativeViewOf(QWidget* widget)
{
    return dynamic_cast<NativeView*>(widget);
}

void syncView(View const& view)
{
    auto& native = *view.native();
    native.sync();
    syncCommon(view, native.widget());
    // A control that was off could not keep the keyboard.
    auto const* const window = view.window();
    if (window && window->firstResponder().get() == &view && !native.widget().hasFocus())
        syncFirstResponder(*window);
}

void NativeViewDeleter::operator()(NativeView* native) const
{
    native->portable = nullptr;
    auto& widget = native->widget();
    widget.hide();
    widget.deleteLater();
}

} // namespace quillbar::platform
