#include "platform/linux/views/NativeView.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/WindowPeer.h"
#include "platform/view/Button.h"
#include "platform/view/TableView.h"

#include <QTextDocument>

#include <cmath>

namespace quillbar::platform {

namespace {

QWidget& parentFor(View const& view)
{
    return view.superview() ? view.superview()->native()->host() : *view.window()->native();
}

QRect placeOf(View const& view)
{
    if (!view.superview())
        return roundedRect(view.frame());
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

class ContainerPeer final : public Peer<QWidget, View> {
public:
    using Peer::Peer;

    // A container draws nothing itself.
    void sync() override { }
};

NativeView* makePeer(View& view, QWidget& parent)
{
    switch (view.kind()) {
    case ViewKind::View:
        return makeContainerPeer(view, parent);
    case ViewKind::Label:
        return makeLabelPeer(view, parent);
    case ViewKind::Button:
        return static_cast<Button&>(view).style() == ButtonStyle::CheckBox
            ? makeCheckBoxPeer(view, parent)
            : makeButtonPeer(view, parent);
    case ViewKind::PopUpButton:
        return makePopUpPeer(view, parent);
    case ViewKind::TextField:
        return makeTextFieldPeer(view, parent);
    case ViewKind::ImageView:
        return makeImagePeer(view, parent);
    case ViewKind::Separator:
        return makeSeparatorPeer(view, parent);
    case ViewKind::ScrollView:
        return makeScrollPeer(view, parent);
    case ViewKind::TableView:
        return makeTablePeer(view, parent);
    case ViewKind::EffectView:
        return makeEffectPeer(view, parent);
    }
    return nullptr;
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

NativeView* makeContainerPeer(View& view, QWidget& parent)
{
    return new ContainerPeer(view, parent);
}

NativeView* createNativeView(View& view)
{
    return makePeer(view, parentFor(view));
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
