// A token gives back once what it holds, whatever way it ends.

#include "platform/Token.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillbar::platform {
namespace {

class TokenContract : public testing::Test {
protected:
    [[nodiscard]] Token claim()
    {
        return Token([this] { ++undone; });
    }

    int undone = 0;
};

TEST_F(TokenContract, Undoes_onceWhenItEndsOrIsReset)
{
    {
        auto token = claim();
        token.reset();
        EXPECT_FALSE(token);
    }
    EXPECT_EQ(undone, 1);
    static_cast<void>(claim());
    EXPECT_EQ(undone, 2);
}

TEST_F(TokenContract, Move_handsTheClaimOn)
{
    auto first = claim();
    Token second(std::move(first));
    EXPECT_TRUE(second);
    EXPECT_EQ(undone, 0);
    second = claim();
    EXPECT_EQ(undone, 1);
    second = Token();
    EXPECT_EQ(undone, 2);
}

TEST_F(TokenContract, Undo_maySeeTheTokenEmpty)
{
    auto token = std::make_unique<Token>();
    *token = Token([&] {
        EXPECT_FALSE(*token);
        token->reset();
        ++undone;
    });
    token->reset();
    EXPECT_EQ(undone, 1);
}

} // namespace
} // namespace quillbar::platform
