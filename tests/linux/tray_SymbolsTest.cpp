#include "linux/tray_Application.h"
#include "platform/Symbols.h"
#include "platform/linux/drawing/SymbolSvg.h"
#include "platform/linux/drawing/SymbolTable.h"
#include "platform/linux/tray/IconFiles.h"
#include "ui/IconMenu.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

QString fileOf(std::string_view name)
{
    return QFileInfo(findSymbol(name).value_or(QString())).completeBaseName();
}

TEST(Symbols, EveryOneOfTheIconChooserAndTheMenuCanBeDrawn)
{
    std::vector<std::string_view> names { "sparkle", "info.circle", "square.and.pencil",
        "magnifyingglass", "arrow.clockwise", "eyeglasses", "music.note", "line.3.horizontal",
        "xmark.circle.fill", "keyboard", "play.fill" };
    for (auto const& choice : iconChoices)
        names.push_back(choice.symbol);
    for (auto const name : names) {
        EXPECT_TRUE(symbolExists(name)) << name;
        EXPECT_TRUE(symbolSvg(name)) << name;
    }
}

TEST(Symbols, TypedNamesAreFoundByTheirWords)
{
    struct Case {
        char const* name;
        char const* file;
    };
    for (auto const& [name, file] : { Case { "cloud.rain.fill", "cloud-rain-fill" },
             Case { "forward.fill", "fast-forward-fill" }, Case { "doc.fill", "file-earmark-fill" },
             Case { "speaker.wave.3.fill", "volume-up-fill" }, Case { "photo", "image" },
             Case { "exclamationmark.triangle.fill", "exclamation-triangle-fill" },
             Case { "hammer.fill", "hammer" }, Case { "chart.bar", "bar-chart" } })
        EXPECT_EQ(fileOf(name).toStdString(), file) << name;
}

TEST(Symbols, NamesThatAreNoneAreUnknown)
{
    for (auto const& name : { std::string(), std::string("no.such.symbol"), std::string("../heart"),
             std::string("/etc/passwd"), std::string("heart\0fill", 10), std::string("Ünï"),
             std::string(100'000, 'a'), std::string("."), std::string("-fill"),
             std::string("%s%n") })
        EXPECT_FALSE(symbolExists(name)) << name.substr(0, 20);
}

double luminance(QColor const& color)
{
    auto const linear = [](double channel) { return std::pow(channel, 2.2); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

TEST(Symbols, DocumentThatNobodyRecolours_isSeenOnEveryGround)
{
    application();
    auto const icon = QImage::fromData(*symbolSvg("gearshape"), "SVG");
    for (QColor const ground : { "#ffffff", "#f0f0f0", "#949494", "#1e6fd9", "#303030" }) {
        QImage image(icon.size(), QImage::Format_RGB32);
        image.fill(ground);
        QPainter(&image).drawImage(0, 0, icon);
        double best = 0;
        for (int x = 0; x < image.width(); ++x) {
            auto const [dark, light]
                = std::minmax({ luminance(ground), luminance(image.pixelColor(x, 8)) });
            best = std::max(best, (light + 0.05) / (dark + 0.05));
        }
        EXPECT_GT(best, 3) << ground.name().toStdString();
    }
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
