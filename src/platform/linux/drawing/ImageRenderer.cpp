#include "platform/linux/drawing/ImageRenderer.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/SymbolOutline.h"
#include "platform/linux/drawing/SymbolSvg.h"

#include <QBuffer>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

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

/// Paints a few rows at a time. Qt hands larger shapes to threads, which take longer to start than
/// to draw, and which stay for half a minute and then wake the idle program.
template <typename Draw> void paintInBands(QImage& image, Draw const& draw)
{
    constexpr int bandHeight = 4;
    auto const ratio = image.devicePixelRatio();
    for (int top = 0; top < image.height(); top += bandHeight) {
        QImage band(image.scanLine(top), image.width(), std::min(bandHeight, image.height() - top),
            image.bytesPerLine(), image.format());
        band.setDevicePixelRatio(ratio);
        QPainter painter(&band);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0, -top / ratio);
        draw(painter);
    }
}

QTransform transformInto(QRectF const& rect, QRectF const& viewBox)
{
    auto const scale = std::min(rect.width() / viewBox.width(), rect.height() / viewBox.height());
    auto const offset = rect.center() - viewBox.center() * scale;
    return QTransform::fromTranslate(offset.x(), offset.y()).scale(scale, scale);
}

// On the whole canvas, because a rectangle's edges need not fall on whole pixels.
QImage renderSvg(
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
    OperationPainter(QSizeF size, ImageContext const& context)
        : image_(clearImage(size, context.devicePixelRatio))
        , size_(size)
        , palette_(context.palette)
    {
    }

    [[nodiscard]] QImage const& image() const { return image_; }

    void operator()(ClipToRoundedRect const& clip)
    {
        QPainterPath path;
        path.addRoundedRect(toQRectF(clip.rect), clip.radius, clip.radius);
        clip_ = clip_ ? clip_->intersected(path) : path;
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
        paint([&](QPainter& painter) { painter.fillRect(rect, gradient); });
    }

    void operator()(DrawSymbol const& symbol)
    {
        drawSymbol(symbol.name, toQRectF(symbol.rect), toQColor(symbol.color, palette_));
    }

    void drawSymbol(std::string_view name, QRectF const& rect, QColor const& color)
    {
        auto const outline = symbolOutline(name);
        if (!outline) {
            auto const picture = renderSvg(name, rect, size_, color, image_.devicePixelRatio());
            paint([&](QPainter& painter) { painter.drawImage(QPointF(0, 0), picture); });
            return;
        }
        auto const transform = transformInto(rect, outline->viewBox);
        for (auto const& path : outline->paths) {
            auto const shape = transform.map(path);
            paint([&](QPainter& painter) { painter.fillPath(shape, color); });
        }
    }

private:
    template <typename Draw> void paint(Draw const& draw)
    {
        paintInBands(image_, [&](QPainter& painter) {
            if (clip_)
                painter.setClipPath(*clip_);
            draw(painter);
        });
    }

    QImage image_;
    QSizeF size_;
    QPalette const& palette_;
    std::optional<QPainterPath> clip_;
};

QImage render(Drawing const& drawing, ImageContext const& context)
{
    OperationPainter painter({ drawing.size.width, drawing.size.height }, context);
    for (auto const& operation : drawing.operations)
        std::visit(painter, operation);
    return painter.image();
}

QImage render(SymbolImage const& symbol, ImageContext const& context)
{
    auto const size
        = symbol.size ? QSizeF(symbol.size->width, symbol.size->height) : context.symbolSize;
    auto const color = symbol.tint ? toQColor(*symbol.tint, context.palette) : context.foreground;
    OperationPainter painter(size, context);
    painter.drawSymbol(symbol.name, QRectF({ 0, 0 }, size), color);
    return painter.image();
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
