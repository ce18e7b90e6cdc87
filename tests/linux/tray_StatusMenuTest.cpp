#include "linux/tray_Application.h"
#include "linux/tray_SampleMenu.h"
#include "platform/linux/tray/MenuKeys.h"
#include "platform/linux/tray/StatusMenu.h"

#include <QKeyEvent>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

constexpr quint32 scanCodeOf1 = 10;
constexpr quint32 scanCodeOfT = 28;

QKeyEvent press(int key, Qt::KeyboardModifiers modifiers = {}, quint32 scanCode = 0)
{
    return QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
}

TEST(MenuKeys, AreFoundByCharacterOrPosition)
{
    KeyEquivalent const one { "1", 0 };
    KeyEquivalent const jump { "t", commandKey | optionKey };
    KeyEquivalent const redo { "Z", commandKey };
    auto const super = Qt::MetaModifier;
    struct Case {
        QKeyEvent press;
        KeyEquivalent equivalent;
        bool isFound;
    } cases[] = {
        { press(Qt::Key_1), one, true },
        { press(Qt::Key_1, Qt::KeypadModifier, 87), one, true },
        { press(Qt::Key_Ampersand, {}, scanCodeOf1), one, true },
        { press(Qt::Key_1, Qt::ShiftModifier, scanCodeOf1), one, true },
        { press(Qt::Key_1, super), one, false },
        { press(Qt::Key_2, {}, scanCodeOf1 + 1), one, false },
        { press(Qt::Key_T, super | Qt::AltModifier), jump, true },
        { press(Qt::Key_T, super), jump, false },
        { press(0x0415, super | Qt::AltModifier, scanCodeOfT), jump, true },
        { press(Qt::Key_Y, super | Qt::AltModifier, scanCodeOfT), jump, false },
        { press(Qt::Key_Z, super | Qt::ShiftModifier), redo, true },
        { press(Qt::Key_Z, super), redo, false },
        { press(Qt::Key_Comma, super), { ",", commandKey }, true },
        { press(Qt::Key_A), { "", 0 }, false },
    };
    for (auto const& [event, equivalent, isFound] : cases)
        EXPECT_EQ(isKeyEquivalent(event, equivalent), isFound)
            << equivalent.key << ' ' << event.key() << ' ' << event.modifiers();
}

TEST(MenuKeys, AreShownInWords)
{
    EXPECT_EQ(keyText({ "t", commandKey | optionKey }), "Super+Alt+T");
    EXPECT_EQ(keyText({ "Z", commandKey }), "Super+Shift+Z");
    EXPECT_EQ(keyText({ "1", 0 }), "1");
    EXPECT_EQ(keyText({ "", commandKey }), "");
}

class StatusMenuTest : public ::testing::Test {
protected:
    void SetUp() override { application(); }

    StatusMenu* open(std::vector<MenuItem> items)
    {
        menu = new StatusMenu(std::make_shared<Menu const>(Menu { {}, std::move(items) }));
        menu->popup({ 0, 0 });
        return menu;
    }

    void type(int key, Qt::KeyboardModifiers modifiers = {})
    {
        auto event = press(key, modifiers);
        QCoreApplication::sendEvent(menu, &event);
    }

    MenuItem numbered(std::string const& name, std::string key)
    {
        auto item = pin(name, run);
        item.keyEquivalent = { std::move(key), 0 };
        return item;
    }

    std::vector<std::string> ran;
    std::function<void(std::string const&)> run
        = [this](std::string const& name) { ran.push_back(name); };
    QPointer<StatusMenu> menu;
};

TEST_F(StatusMenuTest, ShowsNamesExactly)
{
    open({ pin("R&D _x_ <b>"), pin("tab\there"), numbered("A", "1") });
    EXPECT_EQ(menu->actions()[0]->text(), "R&&D _x_ <b>");
    EXPECT_FALSE(menu->actions()[1]->text().contains('\t'));
    EXPECT_EQ(menu->actions()[2]->text(), "A");
    menu->close();
}

TEST_F(StatusMenuTest, StaysOnTheScreenHoweverLongNamesAndListAre)
{
    std::vector<MenuItem> items(5000, pin("A"));
    items.push_back(pin(std::string(10'000, 'W')));
    open(std::move(items));
    auto const screen = menu->screen()->availableGeometry();
    EXPECT_LE(menu->height(), screen.height());
    EXPECT_LE(menu->width(), screen.width());
    auto const actions = menu->actions();
    EXPECT_EQ(menu->actionGeometry(actions.first()).x(), menu->actionGeometry(actions.last()).x())
        << "one column";
    type(Qt::Key_Up);
    EXPECT_EQ(menu->activeAction(), actions.last());
    EXPECT_TRUE(menu->rect().contains(menu->actionGeometry(actions.last())));
    menu->close();
}

} // namespace
} // namespace quillbar::platform
