#include "linux/tray_Application.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

bool isNear(QColor const& left, QColor const& right, int tolerance)
{
    return std::abs(left.red() - right.red()) <= tolerance
        && std::abs(left.green() - right.green()) <= tolerance
        && std::abs(left.blue() - right.blue()) <= tolerance
        && std::abs(left.alpha() - right.alpha()) <= tolerance;
}

#define EXPECT_COLOR(image, x, y, color)                                                           \
    EXPECT_TRUE(isNear((image).pixelColor(x, y), color, 12))                                       \
        << (image).pixelColor(x, y).name(QColor::HexArgb).toStdString()

QImage badge(double ratio)
{
    Image const image = std::make_shared<Drawing const>(Drawing { { 16, 16 },
        { ClipToRoundedRect { { 0, 0, 16, 16 }, 4.48 },
            FillLinearGradient { { 0, 0, 16, 16 }, { .red = 1 }, { .blue = 1 }, 90 },
            DrawSymbol { "sparkle", { 3.36, 3.36, 9.28, 9.28 }, white } } });
    return renderImage(image, { .devicePixelRatio = ratio, .palette = {} });
}

TEST(Image, BadgeHasItsCornersGradientAndGlyphAtEveryScale)
{
    application();
    for (auto const ratio : { 1, 2, 3 }) {
        auto const image = badge(ratio);
        auto const side = 16 * ratio;
        ASSERT_EQ(image.size(), QSize(side, side));
        EXPECT_EQ(image.devicePixelRatio(), ratio);
        for (auto const x : { 0, side - 1 }) {
            EXPECT_LT(image.pixelColor(x, 0).alpha(), 60);
            EXPECT_LT(image.pixelColor(x, side - 1).alpha(), 60);
        }
        EXPECT_COLOR(image, side / 2, 0, QColor(255 / (2 * side), 0, 255 - 255 / (2 * side)));
        EXPECT_COLOR(
            image, side / 2, side - 1, QColor(255 - 255 / (2 * side), 0, 255 / (2 * side)));
        EXPECT_COLOR(image, side / 2, side / 2, QColor(Qt::white));
        // Beside the star's waist the ground shows.
        EXPECT_COLOR(image, side * 11 / 16, side * 5 / 16, QColor(88, 0, 167));
    }
}

TEST(Image, GradientRunsAlongItsAngle)
{
    application();
    Image const image = std::make_shared<Drawing const>(Drawing { { 64, 32 },
        { FillLinearGradient { { 0, 0, 64, 32 }, { .red = 1 }, { .green = 1 }, 45 } } });
    auto const slanted = renderImage(image, { .palette = {} });
    EXPECT_COLOR(slanted, 0, 31, QColor(255, 0, 0));
    EXPECT_COLOR(slanted, 63, 0, QColor(0, 255, 0));
    EXPECT_COLOR(slanted, 32, 16, QColor(127, 127, 0));
}

TEST(Image, SymbolTakesItsOwnSizeAndTintOrThoseOfThePlace)
{
    application();
    ImageContext const place {
        .symbolSize = { 20, 20 }, .devicePixelRatio = 2, .foreground = Qt::blue, .palette = {}
    };
    auto const plain = renderImage(SymbolImage { "heart.fill", {}, {}, {} }, place);
    EXPECT_EQ(plain.size(), QSize(40, 40));
    EXPECT_COLOR(plain, 20, 16, QColor(Qt::blue));
    auto const own = renderImage(
        SymbolImage { "heart.fill", {}, Size { 9.28, 9.28 }, Color(Rgba { .red = 1 }) }, place);
    EXPECT_EQ(own.size(), QSize(19, 19));
    EXPECT_COLOR(own, 9, 7, QColor(Qt::red));
}

TEST(Image, WhatCannotBeDrawnIsClear)
{
    application();
    auto const unknown = renderImage(SymbolImage { "no.such.symbol", {}, {}, {} }, {});
    EXPECT_EQ(unknown.size(), QSize(16, 16));
    EXPECT_EQ(unknown.pixelColor(8, 8).alpha(), 0);
}

// A thread of Qt's pool would end half a minute later, which wakes the idle program.
TEST(Image, PicturesOfTheMenu_startNoThreads)
{
    application();
    for (auto const ratio : { 1, 2, 3 }) {
        EXPECT_FALSE(badge(ratio).isNull());
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

} // namespace
} // namespace quillbar::platform
