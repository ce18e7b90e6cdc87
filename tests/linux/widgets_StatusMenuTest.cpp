#include "linux/tray_SampleMenu.h"
#include "linux/widgets_Application.h"
#include "platform/linux/widgets/StatusMenuWidget.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

TEST(StatusMenuTest, StaysOnTheScreenHoweverLongNamesAndListAre)
{
    application();
    std::vector<MenuItem> items(5000, pin("A"));
    items.push_back(pin(std::string(10'000, 'W')));
    auto* const menu
        = new StatusMenuWidget(std::make_shared<Menu const>(Menu { {}, std::move(items) }));
    menu->popup({ 0, 0 });
    auto const screen = menu->screen()->availableGeometry();
    EXPECT_LE(menu->height(), screen.height());
    EXPECT_LE(menu->width(), screen.width());
    auto const actions = menu->actions();
    EXPECT_EQ(menu->actionGeometry(actions.first()).x(), menu->actionGeometry(actions.last()).x())
        << "one column";
    QTest::keyClick(menu, Qt::Key_Up);
    EXPECT_EQ(menu->activeAction(), actions.last());
    EXPECT_TRUE(menu->rect().contains(menu->actionGeometry(actions.last())));
    menu->close();
}

} // namespace
} // namespace quillbar::platform
