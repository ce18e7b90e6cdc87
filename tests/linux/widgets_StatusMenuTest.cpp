#include "linux/tray_SampleMenu.h"
#include "linux/widgets_Application.h"
#include "platform/linux/widgets/StatusMenuWidget.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
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

TEST(StatusMenuTest, LettersSelectTheNextRowThatBeginsWithThem)
{
    application();
    StatusMenuWidget menu(std::make_shared<Menu const>(Menu { {},
        { heading("B"), pin("Back up"), pin("Bar one"), MenuItem::separator(), pin("Éric") } }));
    quint64 time = 10'000;
    for (auto const& [pause, typed, row] : { std::tuple { 1000, "b", 1 }, { 1000, "b", 2 },
             { 10, "b", 1 }, { 10, "a", 1 }, { 10, "R", 2 }, { 10, " ", 2 }, { 10, "o", 2 },
             { 1000, "é", 4 }, { 1000, "b", 1 }, { 1000, "x", 1 } }) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUtf8(typed));
        press.setTimestamp(time += static_cast<quint64>(pause));
        QApplication::sendEvent(&menu, &press);
        EXPECT_EQ(menu.actions().indexOf(menu.activeAction()), row) << typed;
    }
}

} // namespace
} // namespace quillbar::platform
