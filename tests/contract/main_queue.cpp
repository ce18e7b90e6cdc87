#include "contract/Backend.h"
#include "platform/MainQueue.h"
#include "platform/view/Alert.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillbar::platform {
namespace {

using std::chrono::milliseconds;

TEST(MainQueue, Work_goesOnInOrderInsideAModalQuestionOfEarlierWork)
{
    std::string seen;
    std::optional<AlertAnswer> answer;
    post([&] {
        Alert question;
        question.buttons = { "Save", "Discard", "Cancel" };
        question.accessory = AlertField { "Old", {} };
        answer = runModal(question);
        seen += " answered";
    });
    post([&] {
        seen += "a";
        // Twice, as a chain of work that each step posts anew.
        post([&] { post([&] { seen += "d"; }); });
        std::thread([&] { post([&] { seen += "c"; }); }).join();
        postDelayed(milliseconds(0),
            [&] { post([&] { post([&] { test::answerAlert("Discard", "New"); }); }); });
    });
    post([&] { seen += "b"; });
    test::runUntil([&] { return answer.has_value(); });
    EXPECT_EQ(seen, "abcd answered");
    EXPECT_EQ(answer->button, 1u);
    EXPECT_EQ(answer->text, "New");
}

} // namespace
} // namespace quillbar::platform
