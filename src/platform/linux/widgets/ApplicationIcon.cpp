#include "platform/linux/widgets/ApplicationIcon.h"

#include "platform/Application.h"
#include "platform/linux/drawing/ImageRenderer.h"

#include <QIconEngine>
#include <QPainter>

#include <utility>

namespace quillbar::platform {

namespace {

/// Draws for each window that is shown, so that nothing is kept while none is.
class ApplicationIcon final : public QIconEngine {
public:
    explicit ApplicationIcon(std::function<Image(double size)> iconOfSize)
        : iconOfSize_(std::move(iconOfSize))
    {
    }

    // Those of title bars and task lists; each takes room in the X server as long as the window is
    // there.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return { { 16, 16 }, { 32, 32 }, { 64, 64 } };
    }
    QPixmap pixmap(QSize const& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return QPixmap::fromImage(renderImage(iconOfSize_(size.width()), { .palette = {} }));
    }
    void paint(QPainter* painter, QRect const& rect, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(rect, pixmap(rect.size(), mode, state));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new ApplicationIcon(*this); }

private:
    std::function<Image(double size)> iconOfSize_;
};

} // namespace

QIcon& applicationIcon()
{
    static QIcon icon;
    return icon;
}

// Not the icon of all of Qt's windows, as drawing it would delay the palette.
void setApplicationIcon(std::function<Image(double size)> iconOfSize)
{
    applicationIcon() = QIcon(new ApplicationIcon(std::move(iconOfSize)));
}

} // namespace quillbar::platform
