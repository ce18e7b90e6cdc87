#include "linux/widgets_Fixture.h"
#include "platform/view/Button.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/TextField.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>

namespace quillbar::platform {
namespace {

using Controls = ViewsFixture;

TEST_F(Controls, KeysOnAClosedPopUp_openItAndChangeNothing)
{
    auto const popUp = add(std::make_shared<PopUpButton>(), { 10, 4, 124, 22 });
    for (auto const* title : { "None", "Work" }) {
        MenuItem item;
        item.title = title;
        popUp->addItem(item);
    }
    auto& combo = static_cast<QComboBox&>(widgetOf(*popUp));
    window->makeFirstResponder(popUp);
    press(Qt::Key_P);
    EXPECT_EQ(popUp->selectedIndex(), 0u);
    press(Qt::Key_Down);
    ASSERT_TRUE(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    EXPECT_EQ(popUp->selectedIndex(), 1u);
}

TEST_F(Controls, CheckBox_isAsLargeForAssistiveTechnologyAsItsFrameAndKeepsTheFocus)
{
    auto const box
        = add(std::make_shared<Button>(ButtonStyle::CheckBox, "Login"), { 9, 7, 58, 16 });
    auto& widget = widgetOf(*box);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&widget)->rect(),
        QRect(widget.mapToGlobal(QPoint()), widget.size()));
    window->makeFirstResponder(box);
    QTest::keyClick(&widget, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_TRUE(widget.hasFocus());
}

TEST_F(Controls, WindowHigherThanTheScreen_scrollsToTheControlThatGetsTheFocus)
{
    auto const high = std::make_shared<Window>(Size { 300, 3000 }, WindowStyle::TitledClosable);
    auto const button
        = high->contentView().addSubview(std::make_shared<Button>(ButtonStyle::Push, "Save"));
    button->setFrame({ 10, 2960, 80, 24 });
    high->makeKeyAndOrderFront();
    EXPECT_TRUE(high->native()->screen()->availableGeometry().contains(high->native()->geometry()));
    EXPECT_TRUE(widgetOf(*button).visibleRegion().isEmpty());
    high->makeFirstResponder(button);
    EXPECT_EQ(widgetOf(*button).visibleRegion(), widgetOf(*button).rect());
}

TEST_F(Controls, TypedText_arrivesAndACompositionOnlyWhenItIsDone)
{
    auto const field = add(std::make_shared<TextField>(), { 10, 10, 200, 30 });
    int edits = 0;
    field->onTextChange = [&] { ++edits; };
    window->makeFirstResponder(field);
    QTest::keyClicks(&widgetOf(*field), QStringLiteral("ma"));
    EXPECT_EQ(field->text(), "ma");

    QInputMethodEvent composing(QStringLiteral("´"), {});
    QApplication::sendEvent(&widgetOf(*field), &composing);
    EXPECT_EQ(edits, 2);
    QInputMethodEvent done;
    done.setCommitString(QStringLiteral("é"));
    QApplication::sendEvent(&widgetOf(*field), &done);
    EXPECT_EQ(field->text(), "maé");
    EXPECT_EQ(edits, 3);

    field->setText("x");
    EXPECT_EQ(static_cast<QLineEdit&>(widgetOf(*field)).text(), QStringLiteral("x"));
    EXPECT_EQ(edits, 3);
}

} // namespace
} // namespace quillbar::platform
