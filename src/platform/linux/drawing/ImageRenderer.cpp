#include "platform/linux/drawing/ImageRenderer.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/SymbolSvg.h"

#include <QBuffer>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillbar::platform {

namespace {

// An image has at least one pixel and at most what a screen could show.
int pixels(double points, double ratio)
{
    constexpr double largestSide = 4096;
    return static_cast<int>(std::clamp(std::ceil(points * ratio - 1e-6), 1.0, largestSide));
}

QImage clearImage(QSizeF size, double ratio)
{
    QImage image(pixels(size.width(), ratio), pixels(size.height(), ratio),
        QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

// Drawn on the whole canvas, because a rectangle's edges need not fall on whole pixels.
QImage symbolOnCanvas(
    std::string_view name, QRectF const& rect, QSizeF canvas, QColor const& color, double ratio)
{
    auto result = clearImage(canvas, ratio);
    auto svg = symbolSvg(name, { .canvas = canvas, .rect = rect, .color = "#000", .opacity = 1 });
    if (!svg)
        return result;
    QBuffer buffer(&*svg);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(result.size());
    auto shape = reader.read();
    if (shape.isNull())
        return result;
    shape.setDevicePixelRatio(ratio);
    QPainter painter(&result);
    painter.drawImage(QPointF(0, 0), shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF({ 0, 0 }, canvas), color);
    return result;
}

class OperationPainter {
public:
    OperationPainter(QPainter& painter, QSizeF canvas, double ratio, QPalette const& palette)
        : painter_(painter)
        , canvas_(canvas)
        , ratio_(ratio)
        , palette_(palette)
    {
    }

    void operator()(ClipToRoundedRect const& clip)
    {
        QPainterPath path;
        path.addRoundedRect(toQRectF(clip.rect), clip.radius, clip.radius);
        painter_.setClipPath(path, Qt::IntersectClip);
    }

    void operator()(FillLinearGradient const& fill)
    {
        auto const radians = fill.angle * std::numbers::pi / 180;
        auto const rect = toQRectF(fill.rect);
        QPointF const direction(std::cos(radians), -std::sin(radians));
        auto const reach
            = (rect.width() * std::abs(direction.x()) + rect.height() * std::abs(direction.y()))
            / 2;
        QLinearGradient gradient(
            rect.center() - direction * reach, rect.center() + direction * reach);
        gradient.setColorAt(0, toQColor(fill.start, palette_));
        gradient.setColorAt(1, toQColor(fill.end, palette_));
        painter_.fillRect(rect, gradient);
    }

    void operator()(DrawSymbol const& symbol)
    {
        auto const color = toQColor(symbol.color, palette_);
        painter_.drawImage(QPointF(0, 0),
            symbolOnCanvas(symbol.name, toQRectF(symbol.rect), canvas_, color, ratio_));
    }

private:
    QPainter& painter_;
    QSizeF canvas_;
    double ratio_;
    QPalette const& palette_;
};

QImage render(Drawing const& drawing, ImageContext const& context)
{
    QSizeF const size(drawing.size.width, drawing.size.height);
    auto image = clearImage(size, context.devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    OperationPainter paint(painter, size, context.devicePixelRatio, context.palette);
    for (auto const& operation : drawing.operations)
        std::visit(paint, operation);
    return image;
}

QImage render(SymbolImage const& symbol, ImageContext const& context)
{
    auto const size
        = symbol.size ? QSizeF(symbol.size->width, symbol.size->height) : context.symbolSize;
    auto const color = symbol.tint ? toQColor(*symbol.tint, context.palette) : context.foreground;
    return symbolOnCanvas(
        symbol.name, QRectF({ 0, 0 }, size), size, color, context.devicePixelRatio);
}

} // namespace

QImage renderImage(Image const& image, ImageContext const& context)
{
    if (auto const* symbol = std::get_if<SymbolImage>(&image))
        return render(*symbol, context);
    auto const& drawing = std::get<std::shared_ptr<Drawing const>>(image);
    return drawing ? render(*drawing, context)
                   : clearImage(context.symbolSize, context.devicePixelRatio);
}

} // namespace quillbar::platform
