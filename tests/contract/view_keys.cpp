#include "platform/KeyMonitor.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quillbar::platform {
namespace {

KeyDownHandler noting(std::string& log, char name, KeyEventResult result)
{
    return [&log, name, result](KeyEvent const&) {
        log += name;
        return result;
    };
}

TEST(KeyMonitor, Newest_comesFirstAndAConsumedPressEnds)
{
    std::string log;
    auto const oldest = addKeyDownMonitor(noting(log, 'a', KeyEventResult::Pass));
    auto middle = addKeyDownMonitor(noting(log, 'b', KeyEventResult::Consume));
    auto const newest = addKeyDownMonitor(noting(log, 'c', KeyEventResult::Pass));

    EXPECT_EQ(runKeyDownMonitors({ 0, 0 }), KeyEventResult::Consume);
    EXPECT_EQ(log, "cb");
    middle.reset();
    EXPECT_EQ(runKeyDownMonitors({ 0, 0 }), KeyEventResult::Pass);
    EXPECT_EQ(log, "cbca");
}

TEST(KeyMonitor, Handler_mayRemoveItselfAndOthers)
{
    std::string log;
    auto other = addKeyDownMonitor(noting(log, 'o', KeyEventResult::Consume));
    Token self;
    auto const guard = std::make_shared<int>(0);
    self = addKeyDownMonitor([&, held = guard](KeyEvent const& event) {
        self.reset();
        other.reset();
        log += std::to_string(event.keyCode + static_cast<unsigned>(held.use_count() > 1));
        return KeyEventResult::Pass;
    });

    EXPECT_EQ(runKeyDownMonitors({ 41, shiftKey }), KeyEventResult::Pass);
    EXPECT_EQ(runKeyDownMonitors({ 41, shiftKey }), KeyEventResult::Pass);
    EXPECT_EQ(log, "42");
}

} // namespace
} // namespace quillbar::platform
