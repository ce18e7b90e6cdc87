#pragma once

#include "platform/view/View.h"

#include <QRect>
#include <QWidget>

namespace quillbar::platform {

/// The Qt side of a view. Its widget deletes it, later, once the view is gone.
struct NativeView {
    explicit NativeView(View& shownView)
        : portable(&shownView)
    {
    }
    NativeView(NativeView const&) = delete;
    NativeView& operator=(NativeView const&) = delete;
    virtual ~NativeView() = default;

    [[nodiscard]] virtual QWidget& widget() = 0;
    /// The parent of the subviews' widgets.
    [[nodiscard]] virtual QWidget& host() { return widget(); }
    /// Brings over what is particular to the kind.
    virtual void sync() { widget().update(); }

    /// Null once the view is gone; the widget is hidden then and paints no more.
    View* portable;
};

/// A widget class as the native side of one class of views.
template <typename Widget, typename Kind> class Peer : public Widget, public NativeView {
public:
    Peer(View& shownView, QWidget& parent)
        : Widget(&parent)
        , NativeView(shownView)
    {
    }

    [[nodiscard]] QWidget& widget() override { return *this; }

protected:
    [[nodiscard]] Kind* portableView() const { return static_cast<Kind*>(portable); }
};

/// The native side of the view whose widget this is; null for any other widget.
[[nodiscard]] NativeView* nativeViewOf(QWidget* widget);

/// On whole points, as widgets lie.
[[nodiscard]] QRect roundedRect(Rect const& rect);

/// Qt would render a tool tip that looks like markup as such.
[[nodiscard]] QString plainToolTip(QString const& text);

[[nodiscard]] NativeView* makeButtonPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makePopUpPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makeScrollPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makeTablePeer(View& view, QWidget& parent);

} // namespace quillbar::platform
