#include "platform/linux/drawing/ImageRenderer.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/SymbolSvg.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <png.h>

namespace quillbar::platform {

namespace {

QImage clearImage(QSizeF size, double ratio)
{
    auto const pixels = [ratio](double points) {
        return std::max(1, static_cast<int>(std::ceil(points * ratio - 1e-6)));
    };
    QImage image(pixels(size.width()), pixels(size.height()), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

QLinearGradient toQGradient(FillLinearGradient const& fill, QPalette const& palette)
{
    auto const radians = fill.angle * std::numbers::pi / 180;
    auto const rect = toQRectF(fill.rect);
    QPointF const direction(std::cos(radians), -std::sin(radians));
    auto const reach
        = (rect.width() * std::abs(direction.x()) + rect.height() * std::abs(direction.y())) / 2;
    QLinearGradient gradient(rect.center() - direction * reach, rect.center() + direction * reach);
    gradient.setColorAt(0, toQColor(fill.start, palette));
    gradient.setColorAt(1, toQColor(fill.end, palette));
    return gradient;
}

void drawSymbol(QPainter& painter, std::string_view name, QRectF const& rect, QColor const& color)
{
    auto const svg = symbolSvg(name,
        { .canvas = rect.size(),
            .rect = QRectF({ 0, 0 }, rect.size()),
            .color = color.name().toLatin1() });
    if (!svg)
        return;
    painter.setOpacity(color.alphaF());
    QSvgRenderer(*svg).render(&painter, rect);
    painter.setOpacity(1);
}

struct OperationPainter {
    QPainter& painter;
    QSizeF canvas;
    QPalette const& palette;

    void operator()(ClipToRoundedRect const& clip) const
    {
        QPainterPath path;
        path.addRoundedRect(toQRectF(clip.rect), clip.radius, clip.radius);
        painter.setClipPath(path, Qt::IntersectClip);
    }

    // Qt fills a gradient on threads where it is clipped or more than 95 pixels high; their end
    // half a minute later wakes the idle program.
    void operator()(FillLinearGradient const& fill) const
    {
        auto const rect = toQRectF(fill.rect);
        auto layer = clearImage(canvas, painter.device()->devicePixelRatioF());
        QPainter layerPainter(&layer);
        layerPainter.setRenderHint(QPainter::Antialiasing);
        if (painter.hasClipping())
            layerPainter.setClipPath(painter.clipPath());
        layerPainter.fillRect(rect, Qt::black);
        layerPainter.setClipping(false);
        layerPainter.setRenderHint(QPainter::Antialiasing, false);
        layerPainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        auto const gradient = toQGradient(fill, palette);
        constexpr double stripHeight = 16;
        for (auto top = rect.top(); top < rect.bottom(); top += stripHeight)
            layerPainter.fillRect(
                QRectF(rect.left(), top, rect.width(), stripHeight) & rect, gradient);
        layerPainter.end();
        painter.setClipping(false);
        painter.drawImage(QPointF(0, 0), layer);
        painter.setClipping(true);
    }

    void operator()(DrawSymbol const& symbol) const
    {
        drawSymbol(painter, symbol.name, toQRectF(symbol.rect), toQColor(symbol.color, palette));
    }
};

QImage render(Drawing const& drawing, ImageContext const& context)
{
    QSizeF const size(drawing.size.width, drawing.size.height);
    auto image = clearImage(size, context.devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (auto const& operation : drawing.operations)
        std::visit(OperationPainter { painter, size, context.palette }, operation);
    return image;
}

QImage render(SymbolImage const& symbol, ImageContext const& context)
{
    auto const size
        = symbol.size ? QSizeF(symbol.size->width, symbol.size->height) : context.symbolSize;
    auto const color = symbol.tint ? toQColor(*symbol.tint, context.palette) : context.foreground;
    auto image = clearImage(size, context.devicePixelRatio);
    QPainter painter(&image);
    drawSymbol(painter, symbol.name, QRectF({ 0, 0 }, size), color);
    return image;
}

} // namespace

QImage renderImage(Image const& image, ImageContext const& context)
{
    if (auto const* symbol = std::get_if<SymbolImage>(&image))
        return render(*symbol, context);
    return render(*std::get<std::shared_ptr<Drawing const>>(image), context);
}

QByteArray encodePng(QImage const& image)
{
    auto const rgba = image.convertToFormat(QImage::Format_RGBA8888);
    png_image header {};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(rgba.width());
    header.height = static_cast<png_uint_32>(rgba.height());
    header.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
    QByteArray file(static_cast<qsizetype>(size), Qt::Uninitialized);
    png_image_write_to_memory(&header, file.data(), &size, 0, rgba.constBits(),
        static_cast<png_int_32>(rgba.bytesPerLine()), nullptr);
    file.truncate(static_cast<qsizetype>(size));
    return file;
}

} // namespace quillbar::platform
