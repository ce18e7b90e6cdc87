#pragma once

#include "platform/view/Color.h"
#include "platform/view/View.h"

#include <QColor>
#include <QPainter>
#include <QPalette>

namespace quillbar::platform {

/// Draws one line in the painter's font and pen in the middle of the rectangle's height; what does
/// not fit is drawn narrower, and ends in an ellipsis if that is not enough.
void drawLine(QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& text);

/// Draws text broken into lines from the top of the rectangle; what does not fit is drawn narrower,
/// then smaller.
void drawParagraph(
    QPainter& painter, QRect const& rect, int horizontalAlignment, QString const& text);

/// The colour of text in the view, which may stand on a table's highlight.
[[nodiscard]] QColor textColor(View const& view, Color const& color, QPalette const& palette);

/// The same colour, less of it.
[[nodiscard]] QColor faded(QColor color, double share);

} // namespace quillbar::platform
