#pragma once

#include <QWidget>

#include <functional>

namespace quillbar::platform {

/// A slim vertical scroller over the content, so that the content keeps its whole width.
class OverlayScroller final : public QWidget {
public:
    /// `onScroll` is called with the offset that the person wants, which may lie outside the range.
    OverlayScroller(QWidget& parent, std::function<void(double)> onScroll);

    /// Lies along the right edge of `area`, before all other widgets there; hidden while there is
    /// nothing to scroll. The offset now and the largest there is are in points of content.
    void setRange(QRect const& area, double offset, double maximum);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent*) override { update(); }
    void leaveEvent(QEvent*) override { update(); }

private:
    [[nodiscard]] double thumbLength() const;
    [[nodiscard]] double thumbTop() const;

    std::function<void(double)> onScroll_;
    double offset_ = 0;
    double maximum_ = 0;
    double grip_ = 0;
};

/// How many points of content a turn of the wheel scrolls; negative towards the top.
[[nodiscard]] double scrollDistance(QWheelEvent const& event);

} // namespace quillbar::platform
