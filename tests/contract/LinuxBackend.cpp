#include "contract/Backend.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/input/VirtualKeyCodes.h"
#include "platform/linux/widgets/NativeView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace quillbar::test {

using namespace platform;

namespace {

constexpr int pointerX = 30;

QWidget& widgetOf(View const& view)
{
    return view.native()->widget();
}

int qtKey(KeyEvent const& event, QString const& text)
{
    std::map<std::uint32_t, int> const keys {
        { key::returnKey, Qt::Key_Return },
        { key::tab, event.modifiers == shiftKey ? Qt::Key_Backtab : Qt::Key_Tab },
        { key::escape, Qt::Key_Escape },
        { key::leftArrow, Qt::Key_Left },
        { key::rightArrow, Qt::Key_Right },
        { key::downArrow, Qt::Key_Down },
        { key::upArrow, Qt::Key_Up },
    };
    auto const found = keys.find(event.keyCode);
    return found == keys.end() ? text.at(0).toUpper().unicode() : found->second;
}

} // namespace

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

void press(KeyEvent const& event, std::string const& text)
{
    constexpr quint32 scanCodeOffset = 8;
    auto* const focused = QApplication::focusWidget();
    auto const typed = QString::fromStdString(text);
    QKeyEvent press(QEvent::KeyPress, qtKey(event, typed), toQtModifiers(event.modifiers),
        virtualKeyToEvdev(event.keyCode).value() + scanCodeOffset, 0, 0, typed);
    QApplication::sendEvent(focused ? focused : QApplication::activeWindow(), &press);
}

bool movesFocusItself()
{
    return true;
}

void click(View& view)
{
    QTest::mouseClick(&widgetOf(view), Qt::LeftButton);
}

void doubleClick(TableView& table, std::size_t row)
{
    auto const y = static_cast<int>(table.rectOfRow(row).y) + 1;
    QTest::mouseDClick(&widgetOf(table), Qt::LeftButton, {}, { pointerX, y });
}

void choose(PopUpButton& popUp, std::size_t index)
{
    auto& combo = static_cast<QComboBox&>(widgetOf(popUp));
    QPointer<QWidget> const window = combo.window();
    combo.showPopup();
    auto* const list = combo.view();
    list->setCurrentIndex(combo.model()->index(static_cast<int>(index), 0));
    QTest::keyClick(list, Qt::Key_Return);
    // Without a display a pop-up takes the keyboard from its window.
    window->activateWindow();
}

void drag(TableView& table, std::size_t row, std::size_t gap)
{
    auto& widget = widgetOf(table);
    auto const place = [&](double y) { return QPoint(pointerX, static_cast<int>(y)); };
    QPoint const start = place(table.rectOfRow(row).y + 1);
    QPoint const end = place(std::max(1.0, table.rectOfRow(gap).y - 1));
    QTest::mousePress(&widget, Qt::LeftButton, {}, start);
    QTest::mouseMove(&widget, end);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, end);
}

std::optional<Rect> shownFrame(View const& view)
{
    if (!view.native() || !widgetOf(view).isVisible())
        return std::nullopt;
    auto const& widget = widgetOf(view);
    QRect const frame(widget.mapTo(widget.window(), QPoint()), widget.size());
    return Rect { double(frame.x()), double(frame.y()), double(frame.width()),
        double(frame.height()) };
}

void answerAlert(std::string const& button, std::string const& text)
{
    auto* const dialog = QApplication::activeModalWidget();
    if (auto* const field = dialog->findChild<QLineEdit*>())
        field->setText(QString::fromStdString(text));
    for (auto* const candidate : dialog->findChildren<QPushButton*>()) {
        if (candidate->text() == QString::fromStdString(button))
            candidate->click();
    }
}

} // namespace quillbar::test

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The session that the tests run in must not see their status items.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QApplication const application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
