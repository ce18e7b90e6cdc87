#include "linux/system_Support.h"
#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <thread>
#include <vector>

namespace quillbar::platform {
namespace {

using namespace std::chrono_literals;
using quillbar::testing::runUntil;

// First, as there is one application object at a time.
TEST(MainQueueAtTheEnd, WaitingWork_isDestroyedWithoutRunning)
{
    int count = 1;
    char name[] = "test";
    char* arguments[] = { name, nullptr };
    auto const held = std::make_shared<int>();
    {
        QCoreApplication const application(count, arguments);
        post([held] { FAIL(); });
        postDelayed(0ms, [held] { FAIL(); });
    }
    EXPECT_EQ(held.use_count(), 1);
}

class MainQueue : public ::testing::Test {
protected:
    MainQueue() { quillbar::testing::startApplication(); }
};

TEST_F(MainQueue, Post_keepsTheOrderOfEveryThread)
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
    runUntil([&] { return total == 4 * rounds; });
    for (auto& thread : threads)
        thread.join();
    for (auto const& [thread, order] : seen) {
        EXPECT_EQ(order.size(), static_cast<std::size_t>(rounds));
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << thread;
    }
}

TEST_F(MainQueue, DelayedWork_comesByItsTimeAndNeverSooner)
{
    auto const begin = std::chrono::steady_clock::now();
    std::vector<std::chrono::milliseconds> noted;
    for (auto const delay : { 120ms, 60ms, 0ms }) {
        postDelayed(delay, [&, delay] {
            EXPECT_GE(std::chrono::steady_clock::now() - begin, delay);
            noted.push_back(delay);
        });
    }
    runUntil([&] { return noted.size() == 3; });
    EXPECT_EQ(noted, (std::vector { 0ms, 60ms, 120ms }));
}

} // namespace
} // namespace quillbar::platform
