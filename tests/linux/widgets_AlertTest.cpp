#include "linux/widgets_Application.h"
#include "platform/view/Alert.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
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

/// Shows the alert and does something to its dialog, which has to end it.
AlertAnswer answerAfter(Alert const& alert, std::function<void(QWidget&)> const& action)
{
    application();
    QTimer::singleShot(0, [&action] { action(*QApplication::activeModalWidget()); });
    return runModal(alert);
}

AlertAnswer answerAfter(Alert const& alert, Qt::Key key)
{
    return answerAfter(
        alert, [key](QWidget& dialog) { QTest::keyClick(dialog.focusWidget(), key); });
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
    auto alert = stalePins("<b>A</b> & B");
    alert.buttons = { "Save & Quit" };
    auto isShown = false;
    answerAfter(alert, [&isShown](QWidget& dialog) {
        for (auto const* label : dialog.findChildren<QLabel*>()) {
            if (label->text() == "<b>A</b> & B")
                isShown = label->textFormat() == Qt::PlainText;
        }
        EXPECT_EQ(dialog.findChild<QPushButton*>()->text(), "Save && Quit");
        dialog.close();
    });
    EXPECT_TRUE(isShown);
}

TEST(Alert, LongListScrollsBetweenTheTextsThatStayInSight)
{
    std::string names = "Shortcut";
    for (auto i = 0; i < 5000; ++i)
        names += "\nShortcut " + std::to_string(i);
    for (auto const& text : { names, std::string(10'000, 'W') }) {
        answerAfter(stalePins(text), [](QWidget& dialog) {
            EXPECT_LT(dialog.height(), 480);
            EXPECT_LT(dialog.width(), 640);
            auto const* list = dialog.findChild<QPlainTextEdit*>();
            EXPECT_TRUE(list && list->isReadOnly());
            EXPECT_EQ(dialog.findChildren<QLabel*>().last()->text(), "Remove them?");
            dialog.close();
        });
    }
}

} // namespace
} // namespace quillbar::platform
