#include "linux/tray_Application.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/drawing/PathData.h"
#include "platform/linux/drawing/SymbolOutline.h"
#include "platform/linux/drawing/SymbolSvg.h"

#include <QBuffer>
#include <QDir>
#include <QImageReader>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

constexpr int side = 64;

QImage drawnByQt(std::string const& name)
{
    auto svg = symbolSvg(name, { .color = "#000" });
    QBuffer buffer(&*svg);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize({ side, side });
    return reader.read();
}

/// The largest mean difference of coverage in any field of 8 × 8 pixels, from 0 to 255.
int largestDifference(QImage const& left, QImage const& right)
{
    constexpr int field = 8;
    int largest = 0;
    for (int top = 0; top < side; top += field) {
        for (int start = 0; start < side; start += field) {
            int sum = 0;
            for (int i = 0; i < field * field; ++i) {
                auto const x = start + i % field;
                auto const y = top + i / field;
                sum += std::abs(qAlpha(left.pixel(x, y)) - qAlpha(right.pixel(x, y)));
            }
            largest = std::max(largest, sum / (field * field));
        }
    }
    return largest;
}

TEST(SymbolOutline, InstalledSymbols_lookAsQtDrawsThem)
{
    application();
    QDir const icons("/usr/share/bootstrap-icons/svg", "*.svg");
    auto const files = icons.entryList();
    ASSERT_GT(files.size(), 1000);
    int asOutlines = 0;
    for (qsizetype i = 0; i < files.size(); i += 8) {
        auto const name = files[i].chopped(4).toStdString();
        if (!symbolOutline(name))
            continue;
        ++asOutlines;
        auto const image = renderImage(*symbolImage(name),
            { .symbolSize = { side, side }, .foreground = Qt::black, .palette = {} });
        EXPECT_LE(largestDifference(image, drawnByQt(name)), 4) << name;
    }
    EXPECT_GT(asOutlines, 200);
}

TEST(PathData, WhatIsNone_isRefused)
{
    for (auto const* data : { "L1 1", "1 2", "M", "M1", "M1 x", "M0 0 B1 1", "M0 0z1 1",
             "M0 0a1 1 0 2 0 1 1", "M0 0h1e999", "M0 0hnan", "M0 0l--1 1" })
        EXPECT_FALSE(parsePathData(data)) << data;
}

TEST(ImageRenderer, PicturesOfTheMenu_startNoThreads)
{
    application();
    auto const threads = [] { return QDir("/proc/self/task").entryList(QDir::Dirs).size(); };
    auto const before = threads();
    Image const badge = std::make_shared<Drawing const>(Drawing { { 16, 16 },
        { ClipToRoundedRect { { 0, 0, 16, 16 }, 4.48 },
            FillLinearGradient { { 0, 0, 16, 16 }, { .red = 1 }, { .blue = 1 }, 90 },
            DrawSymbol { "sparkle", { 3.36, 3.36, 9.28, 9.28 }, white } } });
    for (auto const ratio : { 1, 2, 3 })
        EXPECT_FALSE(
            renderImage(badge, { .devicePixelRatio = static_cast<double>(ratio), .palette = {} })
                .isNull());
    EXPECT_FALSE(renderImage(*symbolImage("snowflake"),
        { .symbolSize = { 44, 44 }, .foreground = Qt::black, .palette = {} })
                     .isNull());
    EXPECT_EQ(threads(), before);
}

} // namespace
} // namespace quillbar::platform
