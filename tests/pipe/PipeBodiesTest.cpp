#include "pipe/PipeBodies.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

TEST(PipeLogon, HasItsFieldsAtTheirPlaces)
{
    const auto body = PipeLogon{"ada", "OEMClient", "Ada [Diag Client]"}.Encode();
    ASSERT_EQ(body.size(), 165u);
    EXPECT_EQ(body.substr(0, 50), std::string(50, '\0'));
    EXPECT_EQ(body.substr(50, 50), PipeField("ada", 50));
    EXPECT_EQ(body.substr(100, 15), "OEMClient      ");
    EXPECT_EQ(body.substr(115), PipeField("Ada [Diag Client]", 50));
}

TEST(PipeLogon, IsReadBackWithoutItsBlanks)
{
    const auto logon = PipeLogon::Decode(PipeLogon{"ada", "OEMClient", " Ada L "}.Encode());
    ASSERT_TRUE(logon);
    EXPECT_EQ(logon->logonID, "ada");
    EXPECT_EQ(logon->kind, "OEMClient");
    EXPECT_EQ(logon->userName, "Ada L");
}

TEST(PipeLogon, CutsLongTexts)
{
    const auto logon = PipeLogon::Decode(PipeLogon{std::string(60, 'i'), "k", std::string(60, 'n')}.Encode());
    ASSERT_TRUE(logon);
    EXPECT_EQ(logon->logonID, std::string(50, 'i'));
    EXPECT_EQ(logon->userName, std::string(50, 'n'));
}

TEST(PipeLogon, OfAnotherLengthIsNone)
{
    EXPECT_FALSE(PipeLogon::Decode(std::string(164, ' ')));
    EXPECT_FALSE(PipeLogon::Decode(std::string(166, ' ')));
}

TEST(PipeUserRecord, HasItsFieldsAtTheirPlaces)
{
    const auto body = PipeUserRecord{7, "192.168.100.200", "Ada", "+"}.Encode();
    ASSERT_EQ(body.size(), 79u);
    EXPECT_EQ(body.substr(0, 4), PipeNumber(7));
    EXPECT_EQ(body.substr(4, 15), "192.168.100.200");
    EXPECT_EQ(body.substr(19, 50), PipeField("Ada", 50));
    EXPECT_EQ(body.substr(69), "+         ");
}

TEST(PipeUserRecord, ListsAreReadWhole)
{
    const auto body = PipeUserRecord{7, "::1", " Ada ", "+"}.Encode() + PipeUserRecord{-8, "", "Bob", ""}.Encode();
    const auto records = PipeUserRecord::DecodeList(body);
    ASSERT_TRUE(records);
    ASSERT_EQ(records->size(), 2u);
    EXPECT_EQ((*records)[0].clientID, 7);
    EXPECT_EQ((*records)[0].clientIP, "::1            ");
    EXPECT_EQ((*records)[0].userName, "Ada");
    EXPECT_EQ((*records)[0].userFlags, "+         ");
    EXPECT_EQ((*records)[1].clientID, -8);
    EXPECT_EQ((*records)[1].userName, "Bob");
}

TEST(PipeUserRecord, AListOfAnotherLengthIsNoneAndAnEmptyOneIsEmpty)
{
    EXPECT_FALSE(PipeUserRecord::DecodeList(std::string(80, ' ')));
    EXPECT_FALSE(PipeUserRecord::DecodeList(std::string(78, ' ')));
    ASSERT_TRUE(PipeUserRecord::DecodeList(""));
    EXPECT_TRUE(PipeUserRecord::DecodeList("")->empty());
}

TEST(PipeNotice, CarriesIdNameAndText)
{
    const auto body = PipeNotice{7, "Ada", "Piped to Ada"}.Encode();
    EXPECT_EQ(body, PipeNumber(7) + PipeField("Ada", 50) + "Piped to Ada");
    const auto notice = PipeNotice::Decode(body);
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->clientID, 7);
    EXPECT_EQ(notice->name, "Ada");
    EXPECT_EQ(notice->text, "Piped to Ada");
    EXPECT_TRUE(PipeNotice::Decode(body.substr(0, 54)));
    EXPECT_FALSE(PipeNotice::Decode(body.substr(0, 53)));
}

TEST(PipeAccessReply, LooksAtBitZeroAlone)
{
    EXPECT_TRUE(PipeAccessReply::Decode("\x01yes")->granted);
    EXPECT_TRUE(PipeAccessReply::Decode("\xFF")->granted);
    EXPECT_FALSE(PipeAccessReply::Decode("\x02no")->granted);
    EXPECT_EQ(PipeAccessReply::Decode("\x02no")->text, "no");
    EXPECT_FALSE(PipeAccessReply::Decode(""));
    EXPECT_EQ((PipeAccessReply{true, "t"}).Encode(), "\x01t");
    EXPECT_EQ((PipeAccessReply{false, ""}).Encode(), std::string(1, '\0'));
}

TEST(PipeWelcome, CarriesIdAndText)
{
    const auto welcome = PipeWelcome::Decode(PipeWelcome{9, "Welcome"}.Encode());
    ASSERT_TRUE(welcome);
    EXPECT_EQ(welcome->clientID, 9);
    EXPECT_EQ(welcome->text, "Welcome");
    EXPECT_FALSE(PipeWelcome::Decode("abc"));
}

}  // namespace
}  // namespace fenrik
