#include "contract/Backend.h"
#include "linux/tray_FakeHost.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

namespace quillbar::test {

using testing::FakeHost;
using testing::PrivateBus;

struct StatusArea::Native {
    Native() { host.becomeWatcher(); }

    PrivateBus bus;
    FakeHost host { bus };
};

StatusArea::StatusArea()
    : native_(std::make_unique<Native>())
{
    runUntil([this] { return !native_->host.items.isEmpty(); });
}

StatusArea::~StatusArea() = default;

void StatusArea::openMenu()
{
    native_->host.callItem("Activate", { 5, 5 });
}

void StatusArea::chooseRow(std::string const& title)
{
    auto* const menu = static_cast<QMenu*>(QApplication::activePopupWidget());
    for (auto* const row : menu->actions()) {
        if (row->text() == QString::fromStdString(title))
            menu->setActiveAction(row);
    }
    QTest::keyClick(menu, Qt::Key_Return);
}

} // namespace quillbar::test
