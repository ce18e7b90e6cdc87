// Work runs on the main thread, from the event loop only, in the order of posting.

#include "contract/Backend.h"
#include "platform/MainQueue.h"

#include <gmock/gmock.h>

#include <memory>
#include <utility>

namespace quillbar::platform {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class MainQueueContract : public testing::Test {
protected:
    [[nodiscard]] std::function<void()> note(int number)
    {
        return [this, number] { noted.push_back(number); };
    }

    void waitForNotes(std::size_t count)
    {
        test::waitUntil([&] { return noted.size() >= count; });
    }

    std::vector<int> noted;
};

TEST_F(MainQueueContract, DelayedWork_comesByItsTimeAndNeverSooner)
{
    auto const begin = test::now();
    auto const noteAfter = [&](int number, milliseconds delay) {
        postDelayed(delay, [this, number, delay, begin] {
            EXPECT_GE(test::now() - begin, delay);
            noted.push_back(number);
        });
    };
    noteAfter(3, milliseconds(120));
    noteAfter(2, milliseconds(60));
    noteAfter(1, milliseconds(0));
    EXPECT_THAT(noted, IsEmpty());
    waitForNotes(3);
    EXPECT_THAT(noted, ElementsAre(1, 2, 3));
}

TEST_F(MainQueueContract, Work_mayHoldTheLastReferenceToWhatPosts)
{
    auto owner = std::shared_ptr<int>(new int(7), [this](int const* value) {
        post(note(*value));
        delete value;
    });
    post([owner = std::exchange(owner, nullptr)] {});
    waitForNotes(1);
    EXPECT_THAT(noted, ElementsAre(7));
}

} // namespace
} // namespace quillbar::platform
