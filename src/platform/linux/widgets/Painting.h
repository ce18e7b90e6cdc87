#pragma once

#include "platform/view/Color.h"
#include "platform/view/Image.h"
#include "platform/view/View.h"

#include <QColor>
#include <QEvent>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QSizeF>

#include <functional>

namespace quillbar::platform {

/// Draws one line in the painter's font and pen in the middle of the rectangle's height; what does
/// not fit ends in an ellipsis.
void drawLine(QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& text);

/// Answers a widget's event: where a text is cut that has that much room, the wish for a tool tip
/// shows its whole, unless the widget has a tool tip of its own. Whether it was that.
bool showCutText(QEvent* event, QWidget& widget, QString const& text, int room);

/// What the view lies on: a table's highlight, a list or the window.
[[nodiscard]] QColor backgroundOf(View const& view, QPalette const& palette);

/// The colour of text in the view, legible on what that lies on.
[[nodiscard]] QColor textColor(View const& view, Color const& color, QPalette const& palette);

/// The colour made legible in the middle of a bevel, of which only the style knows the colours;
/// `draw` draws it.
[[nodiscard]] QColor legibleOnBevel(QColor color, double contrast, QSize size,
    QColor const& background, std::function<void(QPainter&)> const& draw);

/// Shows that a person's keys go to what stands in the rectangle.
void drawFocusRing(QPainter& painter, QRectF const& rect, QColor const& color);

/// The same colour with its opacity multiplied by `share`.
[[nodiscard]] QColor faded(QColor color, double share);

/// Keeps the last drawing of an image, because an SVG file is read for each drawing of a symbol.
class CachedImage {
public:
    /// Call it when the image is another one.
    void invalidate() { drawn_ = {}; }

    /// Draws the image in the middle of the rectangle. A symbol without a size gets `symbolSize`,
    /// one without a tint `foreground`.
    void draw(QPainter& painter, QRect const& rect, Image const& image, QSizeF symbolSize,
        QColor const& foreground);

    /// The same, scaled by its proportions so that it fits, and fills the rectangle if `fills`.
    void drawScaled(QPainter& painter, QRect const& rect, Image const& image,
        QColor const& foreground, bool fills);

private:
    void prepare(
        QPainter const& painter, Image const& image, QSizeF symbolSize, QColor const& foreground);

    QImage drawn_;
    QSizeF symbolSize_;
    QColor foreground_;
};

} // namespace quillbar::platform
