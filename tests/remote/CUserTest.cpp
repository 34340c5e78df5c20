#include "remote/CUser.h"

#include "platform/Error.h"
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

TEST(UserList, FindsAUserByItsNumber)
{
    UserList users;
    users.Add({"Ann", "7", "", ""});
    users.Add({"Bob", "9", "", ""});
    ASSERT_NE(users.Find(9), nullptr);
    EXPECT_EQ(users.Find(9)->UserName, "Bob");
    EXPECT_EQ(users.Find(8), nullptr);
    users.Clear();
    EXPECT_EQ(users.Count(), 0);
    EXPECT_EQ(users.Find(9), nullptr);
}

TEST(UserList, RefusesASecondUserOfANumber)
{
    UserList users;
    users.Add({"Ann", "7", "", ""});
    try {
        users.Add({"Bob", "7", "", ""});
        FAIL() << "nothing was thrown";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kDuplicateKey);
    }
    EXPECT_EQ(users.Count(), 1);
}

}  // namespace
}  // namespace fenrik
