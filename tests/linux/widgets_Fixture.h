#pragma once

#include "contract/Backend.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/WindowPeer.h"
#include "platform/view/Window.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace quillbar::platform {

/// A shown and active window of 300 × 200 points.
class ViewsFixture : public testing::Test {
protected:
    ViewsFixture()
    {
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window->native(), 60'000));
    }
    ~ViewsFixture() override
    {
        window.reset();
        test::settle();
    }

    template <typename Kind> std::shared_ptr<Kind> add(std::shared_ptr<Kind> view, Rect frame)
    {
        view->setFrame(frame);
        return window->contentView().addSubview(std::move(view));
    }

    [[nodiscard]] static QWidget& widgetOf(View const& view) { return view.native()->widget(); }

    /// Presses a key where the keyboard is.
    void press(Qt::Key key)
    {
        auto* const focused = QApplication::focusWidget();
        QTest::keyClick(focused ? focused : QApplication::activeWindow(), key);
    }

    std::shared_ptr<Window> window
        = std::make_shared<Window>(Size { 300, 200 }, WindowStyle::TitledClosable);
};

} // namespace quillbar::platform
