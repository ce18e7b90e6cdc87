#include "linux/tray_Application.h"
#include "platform/linux/tray/AlertDialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <string>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

Alert stalePins(std::string const& names)
{
    return { .style = AlertStyle::Warning,
        .messageText = "Some pinned shortcuts are missing",
        .informativeText = "Deleted:\n\n" + names + "\n\nRemove them?",
        .buttons = { "Remove", "Keep" },
        .accessory = {} };
}

void type(QWidget& dialog, int key)
{
    auto* target = dialog.focusWidget() ? dialog.focusWidget() : &dialog;
    QKeyEvent event(QEvent::KeyPress, key, {});
    QCoreApplication::sendEvent(target, &event);
}

AlertAnswer answerAfter(Alert const& alert, int key)
{
    application();
    QTimer::singleShot(0, [key] { type(*QApplication::activeModalWidget(), key); });
    return runModal(alert);
}

TEST(Alert, ReturnIsTheFirstButtonAndEscapeTheLast)
{
    EXPECT_EQ(answerAfter(stalePins("A"), Qt::Key_Return).button, 0U);
    EXPECT_EQ(answerAfter(stalePins("A"), Qt::Key_Escape).button, 1U);
    auto three = stalePins("A");
    three.buttons.emplace_back("Later");
    EXPECT_EQ(answerAfter(three, Qt::Key_Escape).button, 2U);
}

TEST(Alert, TextIsPlainAndButtonsHaveNoMnemonics)
{
    application();
    auto alert = stalePins("<b>A</b> & B");
    alert.buttons = { "Save & Quit" };
    AlertDialog const dialog(alert);
    auto isShown = false;
    for (auto const* label : dialog.findChildren<QLabel*>()) {
        if (label->text() == "<b>A</b> & B")
            isShown = label->textFormat() == Qt::PlainText;
    }
    EXPECT_TRUE(isShown);
    EXPECT_EQ(dialog.findChild<QPushButton*>()->text(), "Save && Quit");
}

TEST(Alert, LongListScrollsBetweenTheTextsThatStayInSight)
{
    application();
    std::string names = "Shortcut";
    for (auto i = 0; i < 5000; ++i)
        names += "\nShortcut " + std::to_string(i);
    for (auto const& text : { names, std::string(10'000, 'W') }) {
        AlertDialog dialog(stalePins(text));
        dialog.adjustSize();
        EXPECT_LT(dialog.height(), 480);
        EXPECT_LT(dialog.width(), 640);
        auto const* list = dialog.findChild<QPlainTextEdit*>();
        ASSERT_NE(list, nullptr);
        EXPECT_TRUE(list->isReadOnly());
        EXPECT_EQ(dialog.findChildren<QLabel*>().last()->text(), "Remove them?");
    }
}

} // namespace
} // namespace quillbar::platform
