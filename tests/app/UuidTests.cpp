#include "app/Uuid.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace quillbar {
namespace {

TEST(RandomUuid, HasTheFormOfVersion4AndIsFresh)
{
    std::regex const form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        auto const uuid = randomUuid();
        EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

} // namespace
} // namespace quillbar
