#include "contract/Backend.h"
#include "platform/MainQueue.h"
#include "platform/view/Alert.h"

#include <gtest/gtest.h>

namespace quillbar::platform {
namespace {

TEST(MainQueue, PostedWork_goesOnInsideAModalQuestionOfEarlierWork)
{
    bool isAnswered = false;
    post([&] {
        Alert question;
        question.buttons = { "OK" };
        static_cast<void>(runModal(question));
        isAnswered = true;
    });
    post([&] {
        EXPECT_FALSE(isAnswered);
        test::closeAlert();
    });
    test::runUntil([&] { return isAnswered; });
}

} // namespace
} // namespace quillbar::platform
