#include "linux/widgets_Application.h"
#include "platform/Symbols.h"
#include "platform/linux/drawing/SymbolSvg.h"
#include "platform/linux/tray/IconFiles.h"
#include "ui/IconMenu.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

TEST(Symbols, EveryOneOfTheIconChooserAndTheMenuCanBeDrawn)
{
    std::vector<std::string_view> names { "sparkle", "info.circle", "square.and.pencil",
        "magnifyingglass", "arrow.clockwise", "eyeglasses", "music.note", "line.3.horizontal",
        "xmark.circle.fill", "keyboard", "play.fill", "speaker.wave.3.fill", "hammer.fill" };
    for (auto const& choice : iconChoices)
        names.push_back(choice.symbol);
    for (auto const name : names) {
        EXPECT_TRUE(symbolExists(name)) << name;
        EXPECT_TRUE(symbolSvg(name)) << name;
    }
}

TEST(Symbols, NamesThatAreNoneAreUnknown)
{
    for (auto const& name : { std::string(), std::string("no.such.symbol"), std::string("../heart"),
             std::string("/etc/passwd"), std::string("heart\0fill", 10), std::string("Ünï"),
             std::string(100'000, 'a'), std::string("."), std::string("-fill"),
             std::string("%s%n") })
        EXPECT_FALSE(symbolExists(name)) << name.substr(0, 20);
}

TEST(Symbols, DocumentThatNobodyRecolours_isWhiteWithADarkRim)
{
    application();
    auto const icon = QImage::fromData(*symbolSvg("gearshape"), "SVG");
    auto darkest = 255;
    auto brightest = 0;
    for (int x = 0; x < icon.width(); ++x) {
        auto const pixel = icon.pixelColor(x, 8);
        if (pixel.alpha() < 200)
            continue;
        darkest = std::min(darkest, pixel.lightness());
        brightest = std::max(brightest, pixel.lightness());
    }
    EXPECT_LT(darkest, 80);
    EXPECT_GT(brightest, 200);
}

TEST(IconFiles, WritesEachLookOncePrivatelyAndCleansUp)
{
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    QString folder;
    {
        IconFiles files;
        EXPECT_TRUE(QDir(runtime.path()).isEmpty());
        EXPECT_EQ(files.iconName({ "heart.fill", {}, 1 }), "quillbar-heart-fill-symbolic");
        EXPECT_EQ(files.iconName({ "heart.fill", {}, 0.35 }), "quillbar-heart-fill-dim35-symbolic");
        EXPECT_EQ(files.iconName({ "heart.fill", QColor(255, 0, 0), 0.35 }),
            "quillbar-heart-fill-dim35-ff0000");
        EXPECT_EQ(files.iconName({ "no.such.symbol", {}, 1 }), "");
        folder = files.folder();
        EXPECT_TRUE(folder.startsWith(runtime.path()));
        EXPECT_EQ(QFile::permissions(folder) & 0x0077, QFile::Permissions());
        QFile::remove(folder + "/quillbar-heart-fill-symbolic.svg");
        EXPECT_EQ(files.iconName({ "heart.fill", {}, 1 }), "quillbar-heart-fill-symbolic");
        EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 2);
    }
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(IconFiles, FallsBackToTheTemporaryFolder)
{
    for (auto const* unusable : { "/nonexistent", "." }) {
        qputenv("XDG_RUNTIME_DIR", unusable);
        IconFiles files;
        EXPECT_EQ(files.iconName({ "heart.fill", {}, 1 }), "quillbar-heart-fill-symbolic");
        EXPECT_TRUE(files.folder().startsWith(QDir::tempPath()));
    }
}

} // namespace
} // namespace quillbar::platform
