#pragma once

#include "platform/view/View.h"

#include <QRect>
#include <QWidget>

namespace quillbar::platform {

/// The Qt side of a view: a part of its widget, which the event loop deletes once the view is gone.
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
    /// Shows the state that is particular to the view's kind.
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

/// Rounded to whole points, for the geometry of a widget.
[[nodiscard]] QRect roundedRect(Rect const& rect);

/// The text, escaped where Qt would take it for markup and render it.
[[nodiscard]] QString plainToolTip(QString const& text);

[[nodiscard]] NativeView* makeButtonPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makePopUpPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makeScrollPeer(View& view, QWidget& parent);
[[nodiscard]] NativeView* makeTablePeer(View& view, QWidget& parent);

} // namespace quillbar::platform
