#pragma once

#include <QWidget>

#include <functional>

namespace quillbar::platform {

/// A slim vertical scroller over the content, so that the content keeps its whole width.
class OverlayScroller final : public QWidget {
public:
    static constexpr int thickness = 8;

    OverlayScroller(QWidget& parent, std::function<void(double)> onScroll)
        : QWidget(&parent)
        , onScroll_(std::move(onScroll))
    {
    }

    /// The offset now, and the largest there is, both in points of content.
    void setRange(double offset, double maximum);

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

} // namespace quillbar::platform
