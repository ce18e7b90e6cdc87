#include "linux/widgets_Application.h"
#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "ui/AboutWindowController.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

bool isNear(QColor const& left, QColor const& right)
{
    constexpr int tolerance = 12;
    return left.alpha() == 255 && std::abs(left.red() - right.red()) <= tolerance
        && std::abs(left.green() - right.green()) <= tolerance
        && std::abs(left.blue() - right.blue()) <= tolerance;
}

#define EXPECT_COLOR(image, x, y, color)                                                           \
    EXPECT_TRUE(isNear((image).pixelColor(x, y), color))                                           \
        << (image).pixelColor(x, y).name(QColor::HexArgb).toStdString()

QImage badge(double ratio)
{
    Image const image = std::make_shared<Drawing const>(Drawing { { 16, 16 },
        { ClipToRoundedRect { { 0, 0, 16, 16 }, 4.48 },
            FillLinearGradient { { 0, 0, 16, 16 }, { .red = 1 }, { .blue = 1 }, 90 },
            DrawSymbol { "sparkle", { 3.36, 3.36, 9.28, 9.28 }, white } } });
    return renderImage(image, { .devicePixelRatio = ratio, .palette = {} });
}

TEST(Image, BadgeHasItsCornersGradientAndGlyph)
{
    application();
    auto const image = badge(2);
    ASSERT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(image.devicePixelRatio(), 2);
    EXPECT_LT(image.pixelColor(0, 0).alpha(), 60);
    EXPECT_COLOR(image, 16, 0, QColor(4, 0, 251));
    EXPECT_COLOR(image, 16, 31, QColor(251, 0, 4));
    EXPECT_COLOR(image, 16, 16, QColor(Qt::white));
    // Beside the star's waist the background shows.
    EXPECT_COLOR(image, 22, 10, QColor(88, 0, 167));
}

// A thread of Qt's pool would end half a minute later, which wakes the idle program.
TEST(Image, PicturesOfMenuAndWindows_startNoThreads)
{
    application();
    for (auto const ratio : { 1, 2, 3 }) {
        EXPECT_FALSE(badge(ratio).isNull());
        auto const icon = AboutWindowController::appIcon(96 * ratio);
        EXPECT_FALSE(renderImage(icon, { .palette = {} }).isNull());
        auto const symbol = renderImage(SymbolImage { "snowflake", {}, {}, {} },
            { .devicePixelRatio = static_cast<double>(ratio), .palette = {} });
        EXPECT_FALSE(encodePng(symbol).isEmpty());
    }
    for (auto const& task : QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name("/proc/self/task/" + task + "/comm");
        ASSERT_TRUE(name.open(QIODevice::ReadOnly));
        EXPECT_FALSE(name.readAll().contains("pool"));
    }
}

TEST(Image, IconOfTheWindowsIsTheLaunchersWithTheHeartInTheMiddle)
{
    QImage const launchers(LAUNCHERS_ICON);
    auto const drawn
        = renderImage(AboutWindowController::appIcon(launchers.width()), { .palette = {} });
    auto different = 0;
    QRect heart;
    for (auto y = 0; y < launchers.height(); ++y) {
        for (auto x = 0; x < launchers.width(); ++x) {
            auto const expected = launchers.pixelColor(x, y);
            different += expected.alpha() == 255 && !isNear(drawn.pixelColor(x, y), expected);
            if (isNear(drawn.pixelColor(x, y), Qt::white))
                heart |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_LT(different, 100) << "more than its edges";
    EXPECT_EQ(heart, QRect(25, 25, 78, 78));
}

TEST(ContrastTest, ColoursGoAsFarTowardsBlackOrWhiteAsTheirBackgroundAsksFor)
{
    struct Case {
        QColor color;
        QColor background;
        QColor legible;
    };
    Case const cases[] {
        { QColor(0, 0, 0, 166), Qt::white, QColor(0, 0, 0, 166) },
        { QColor(0, 0, 0, 64), Qt::white, 0x747474 },
        { 0x3584e4, 0x2b2b2b, 0x6295e7 },
        { 0x308cc6, Qt::white, 0x297aad },
        // White cannot be told from it, nor is there anything whiter.
        { Qt::white, 0xf0e000, 0x5f5f5f },
    };
    for (auto const& [color, background, expected] : cases)
        EXPECT_EQ(legible(color, background, 4.7).name(), expected.name());
}

} // namespace
} // namespace quillbar::platform
