#include "platform/headless/Headless.h"
#include "platform/headless/Person.h"
#include "platform/headless/Windows.h"
#include "platform/view/ImageView.h"
#include "platform/view/Label.h"
#include "ui/AboutWindowController.h"
#include "ui/PermissionWindowController.h"

#include <gtest/gtest.h>

namespace quillbar {
namespace {

using namespace platform;

class FirstRunWindowsTest : public testing::Test {
protected:
    FirstRunWindowsTest() { headless::reset(); }
};

TEST_F(FirstRunWindowsTest, PermissionsLeavesOutWhatTheSystemLacks)
{
    headless::setHasSecuritySettings(false);
    headless::setMissingSymbols({ "keyboard" });
    auto const permissions = makeController<PermissionWindowController>();
    permissions->showWindow();
    EXPECT_FALSE(headless::find<Button>(permissions->window(), "Open System Settings"));
    auto const images = headless::findAll<ImageView>(permissions->window());
    ASSERT_EQ(images.size(), 3U);
    EXPECT_FALSE(images[1]->image());
    EXPECT_TRUE(images[2]->image());
}

TEST_F(FirstRunWindowsTest, AboutShowsTheVersionAndItsLinksStayOpen)
{
    headless::setBundleVersion("");
    auto const about = makeController<AboutWindowController>();
    about->showWindow();
    EXPECT_TRUE(headless::find<Label>(about->window(), "Version 1.0"));
    for (auto const& link : headless::findAll<Button>(about->window()))
        EXPECT_TRUE(headless::click(link));
    EXPECT_EQ(headless::openedAddresses().size(), 2U);
    EXPECT_TRUE(about->window().isVisible());
}

TEST_F(FirstRunWindowsTest, BundledIconReplacesTheDrawnOne)
{
    auto const bundled = *symbolImage("bundled");
    headless::setBundleImage(bundled);
    EXPECT_EQ(AboutWindowController::appIcon(88), bundled);
}

} // namespace
} // namespace quillbar
