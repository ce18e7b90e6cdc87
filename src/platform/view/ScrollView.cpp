#include "platform/view/ScrollView.h"

#include <algorithm>

namespace quillbar::platform {

void ScrollView::setDocumentView(std::shared_ptr<View> document)
{
    removeAllSubviews();
    offset_ = 0;
    // Until it is known what shows, nothing of the document needs a peer.
    document->visibleRectChanged({});
    addSubview(std::move(document));
    contentChanged();
}

void ScrollView::setBorder(ScrollBorder border)
{
    if (assign(border_, border))
        contentChanged();
}

void ScrollView::setOffset(double offset)
{
    if (assign(offset_, std::clamp(offset, 0.0, maximumOffset())))
        contentChanged();
}

void ScrollView::scrollToVisible(Rect const& documentRect)
{
    double const lowest = documentRect.y + documentRect.height - contentSize().height;
    setOffset(std::min(std::max(offset_, lowest), documentRect.y));
}

View* ScrollView::documentView() const
{
    return subviews().empty() ? nullptr : subviews().front().get();
}

double ScrollView::maximumOffset() const
{
    auto const* const document = documentView();
    // A document that fits into the frame does not scroll, although the border covers its edges.
    if (!document || document->frame().height <= frame().height)
        return 0;
    return document->frame().height - contentSize().height;
}

Size ScrollView::contentSize() const
{
    return { std::max(0.0, frame().width - 2 * borderWidth()),
        std::max(0.0, frame().height - 2 * borderWidth()) };
}

Rect ScrollView::visibleRect() const
{
    return { 0, offset_, contentSize().width, contentSize().height };
}

Point ScrollView::contentOrigin() const
{
    return { borderWidth(), borderWidth() - offset_ };
}

double ScrollView::borderWidth() const
{
    return border_ == ScrollBorder::Bezel ? 1 : 0;
}

void ScrollView::subviewResized(View&)
{
    contentChanged();
}

void ScrollView::contentChanged()
{
    offset_ = std::clamp(offset_, 0.0, maximumOffset());
    // First the peers of what comes into view, then the native scrolling.
    if (auto* const document = documentView()) {
        document->visibleRectChanged(visibleRect());
        document->sync();
    }
    sync();
}

void scrollToVisible(View const& view)
{
    View const* child = &view;
    for (auto* document = view.superview(); document; document = document->superview()) {
        auto* const around = document->superview();
        if (around && around->kind() == ViewKind::ScrollView) {
            // A row of a table shows as a whole.
            auto const& shown = document->kind() == ViewKind::TableView ? *child : view;
            Rect const origin = document->frameInWindow();
            static_cast<ScrollView*>(around)->scrollToVisible(
                offsetBy(shown.frameInWindow(), { -origin.x, -origin.y }));
        }
        child = document;
    }
}

} // namespace quillbar::platform
