#include "remote/CUser.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(CUser, ANewOneIsNobody)
{
    const CUser user;
    EXPECT_EQ(user.clientID, "-1");
    EXPECT_TRUE(user.IsNobody());
    EXPECT_FALSE(user.isPiped());
    EXPECT_EQ(user.key(), "-1ID");
}

TEST(CUser, IsPipedIfItsFlagsBeginWithAPlus)
{
    EXPECT_TRUE((CUser{"Ann", "7", "", "+         "}).isPiped());
    EXPECT_FALSE((CUser{"Ann", "7", "", " +        "}).isPiped());
    EXPECT_FALSE((CUser{"Ann", "7", "", ""}).isPiped());
}

TEST(CUser, TheKeyIsTheNumberAndTwoLetters)
{
    EXPECT_EQ((CUser{"Ann", "7", "", ""}).key(), "7ID");
}

}  // namespace
}  // namespace fenrik
