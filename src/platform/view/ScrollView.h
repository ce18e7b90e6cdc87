#pragma once

#include "platform/view/View.h"

namespace quillbar::platform {

enum class ScrollBorder : std::uint8_t { None, Bezel };
enum class VerticalScroller : std::uint8_t {
    None,
    /// Lies over the content's right edge, there only when the content is higher than the frame.
    AutoHiding,
};

/// Shows a part of one document view, which it scrolls vertically. However many subviews the
/// document has, only those near the visible part have native peers.
class ScrollView : public View {
public:
    ScrollView()
        : View(ViewKind::ScrollView)
    {
    }

    /// Replaces the document; its frame's size is what scrolls.
    void setDocumentView(std::shared_ptr<View> document);
    void setBorder(ScrollBorder border);
    void setVerticalScroller(VerticalScroller scroller) { set(scroller_, scroller); }
    void setDrawsBackground(bool drawsBackground) { set(drawsBackground_, drawsBackground); }
    /// How far the content is scrolled down; kept within the content.
    void setOffset(double offset);
    /// Scrolls as little as needed to show the part of the document.
    void scrollToVisible(Rect const& documentRect);

    [[nodiscard]] View* documentView() const;
    [[nodiscard]] ScrollBorder border() const { return border_; }
    [[nodiscard]] VerticalScroller verticalScroller() const { return scroller_; }
    [[nodiscard]] bool drawsBackground() const { return drawsBackground_; }
    [[nodiscard]] double offset() const { return offset_; }
    [[nodiscard]] double maximumOffset() const;
    /// The frame's size without the border.
    [[nodiscard]] Size contentSize() const;
    /// The part of the document that shows.
    [[nodiscard]] Rect visibleRect() const;
    [[nodiscard]] Point contentOrigin() const override;

    /// A person scrolled.
    void userScrolled(double offset) { setOffset(offset); }

protected:
    void layout() override { contentChanged(); }
    void subviewResized(View& subview) override;

private:
    [[nodiscard]] double borderWidth() const;
    void contentChanged();

    ScrollBorder border_ = ScrollBorder::None;
    VerticalScroller scroller_ = VerticalScroller::AutoHiding;
    bool drawsBackground_ = true;
    double offset_ = 0;
};

/// Scrolls every scroll view around the view so that the view shows.
void scrollToVisible(View const& view);

} // namespace quillbar::platform
