#include "contract/Backend.h"
#include "platform/MainQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <thread>
#include <vector>

namespace quillbar::platform {
namespace {

TEST(MainQueue, Post_keepsTheOrderOfEveryThread)
{
    constexpr int rounds = 500;
    std::map<int, std::vector<int>> seen;
    int total = 0;
    auto const postAll = [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            post([&, thread, round] {
                seen[thread].push_back(round);
                ++total;
            });
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 1; thread < 4; ++thread)
        threads.emplace_back(postAll, thread);
    postAll(0);
    EXPECT_EQ(total, 0) << "ran from within the call";
    test::runUntil([&] { return total == 4 * rounds; });
    for (auto& thread : threads)
        thread.join();
    for (auto const& [thread, order] : seen) {
        EXPECT_EQ(order.size(), static_cast<std::size_t>(rounds));
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << thread;
    }
}

} // namespace
} // namespace quillbar::platform
