#include "commands/SpecialCommandMessage.h"

#include "SpecialFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SpecialMessage : public SpecialTest {
protected:
    [[nodiscard]] SpecialCommandMessage Begin(const CMessage& message, int selectedNode = 0)
    {
        return {&special, message, selectedNode};
    }
    static std::vector<std::string> Shown(const std::vector<SpecialCommandMessage::Entry>& entries)
    {
        std::vector<std::string> texts;
        for (const auto& entry : entries)
            texts.push_back(entry.text.toStdString() + '=' + std::to_string(entry.code));
        return texts;
    }
};

TEST_F(SpecialMessage, BeginsWithWhatTheMessageSays)
{
    const auto message = Begin(Of(0x0306, 1));
    EXPECT_EQ(message.SelectedName(), "Doors");
    EXPECT_EQ(message.SelectedCode(), 6 * 4 + 2);
    EXPECT_EQ(message.Node(), 3);
    EXPECT_EQ(message.Message().data, 0x0306);
    EXPECT_EQ(message.Message().State, 1);
    EXPECT_EQ(message.Message().extended, 0);
    EXPECT_TRUE(message.Message().EchoSend);
}

TEST_F(SpecialMessage, ListsEachNameOnceWithItsFirstItem)
{
    EXPECT_THAT(Shown(Begin(Of(5)).Names()), ElementsAre("Restart=20", "Doors=26", "Assign=161"));
}

TEST_F(SpecialMessage, ListsTheSpecificsOfTheNameWithoutThoseOfHints)
{
    EXPECT_THAT(Shown(Begin(Of(6)).Specifics()), ElementsAre("Open=26", "<default>=24"));
    EXPECT_THAT(Shown(Begin(Of(5)).Specifics()), ElementsAre("<default>=20"));
    EXPECT_THAT(Shown(Begin(Of(40, 0, 1)).Specifics()), IsEmpty());
    EXPECT_EQ(Begin(Of(40, 0, 1)).Hint(), "Press the switch");
    EXPECT_EQ(Begin(Of(6, 1)).Hint(), "");
}

TEST_F(SpecialMessage, FallsBackToTheFirstItem)
{
    const auto message = Begin(Of(0x0363));
    EXPECT_EQ(message.SelectedName(), "Restart");
    EXPECT_EQ(message.Message().data, 0x0305);
    EXPECT_EQ(special.itemList().size(), 5u);
}

TEST_F(SpecialMessage, WithoutANodeInItTakesTheSelectedOne)
{
    EXPECT_EQ(Begin(Of(5), 4).Node(), 4);
    EXPECT_EQ(Begin(Of(5), 4).Message().data, 0x0405);
    EXPECT_EQ(Begin(Of(5), 0).Node(), 0);
    EXPECT_EQ(Begin(Of(0x0305), 4).Node(), 3);
}

TEST_F(SpecialMessage, CarriesWhatIsChosen)
{
    auto message = Begin(Of(0x0305));
    message.Select(161);
    EXPECT_EQ(message.Message().data, 0x0328);
    EXPECT_EQ(message.Message().State, 0);
    EXPECT_EQ(message.Message().extended, 1);
    message.SetNode(7);
    EXPECT_EQ(message.Message().data, 0x0728);
}

// The message list decodes what is received with the same object.
TEST_F(SpecialMessage, KeepsItsChoiceWhileTheListNamesMessages)
{
    auto message = Begin(Of(0x0305));
    special.SelectItem(0x0963, 1, 0, false);
    message.SetNode(4);
    EXPECT_EQ(message.Message().data, 0x0405);
    special.SelectItem(0x0A06, 1, 0, false);
    message.Select(161);
    EXPECT_EQ(message.Message().data, 0x0428);
}

struct NodeRow {
    const char* name;
    int mask;
    int shift;
    int typed;
    int node;
    int data;
};

class NodeLimits : public SpecialMessage, public testing::WithParamInterface<NodeRow> {};

TEST_P(NodeLimits, CutTheNumber)
{
    special.NodeMask = GetParam().mask;
    special.NodeShift = std::uint8_t(GetParam().shift);
    special.CodeMask = 0;
    auto message = Begin(Of(0));
    message.SetNode(GetParam().typed);
    EXPECT_EQ(message.Node(), GetParam().node);
    EXPECT_EQ(message.Message().data & 0xFFFF, GetParam().data);
}

INSTANTIATE_TEST_SUITE_P(
    SpecialMessage, NodeLimits,
    testing::Values(NodeRow{"Below", 0x1F00, 8, 30, 30, 0x1E00}, NodeRow{"TheLargest", 0x1F00, 8, 31, 31, 0x1F00},
                    NodeRow{"OneAbove", 0x1F00, 8, 32, 0, 0}, NodeRow{"FarAbove", 0x1F00, 8, 99999, 31, 0x1F00},
                    // Only a number above the mask is cut, so one that fits its width keeps bits that don't travel.
                    NodeRow{"AMaskWithAHole", 0x0500, 8, 2, 2, 0}, NodeRow{"AboveAHole", 0x0500, 8, 7, 5, 0x0500},
                    NodeRow{"TheWholeWord", 0xFFFF, 0, 65535, 65535, 0xFFFF},
                    NodeRow{"AShiftOf31", int(0x80000000), 31, 3, 1, 0}, NodeRow{"AShiftOf32", 0xFF00, 32, 3, 0, 0},
                    NodeRow{"AShiftOf255", -1, 255, 3, 0, 0}, NodeRow{"ANegativeMask", -1, 0, 5, 5, 5}),
    [](const auto& row) { return row.param.name; });

TEST_F(SpecialMessage, WithoutANodePartKeepsTheNodeOutOfItself)
{
    special.NodeMask = 0;
    auto message = Begin(Of(5), 4);
    EXPECT_FALSE(message.TakesNode());
    message.SetNode(9);
    EXPECT_EQ(message.Message().data, 5);
}

TEST_F(SpecialMessage, NeedsItems)
{
    CSpecialCommand empty(commands, selected);
    EXPECT_THROW(SpecialCommandMessage(&empty, Of(5), 0), Error);
}

TEST_F(SpecialMessage, WithoutASpecialCommandIsANumberInTheData)
{
    SpecialCommandMessage message(nullptr, Request(969, 0, 0, 1), 4);
    EXPECT_TRUE(message.TakesNode());
    EXPECT_FALSE(message.RequiresMount());
    EXPECT_THAT(message.Names(), IsEmpty());
    EXPECT_THAT(message.Specifics(), IsEmpty());
    EXPECT_EQ(message.Message().data, 4);
    message.SetNode(300);
    EXPECT_EQ(message.Message().data, 300);
    EXPECT_EQ(message.Message().extended, 1);
}

TEST_F(SpecialMessage, OfAnItemNamesNoNode)
{
    special.SetscNode(9);
    const CMessage message = SpecialCommandMessage::OfItem(&special, 930, 161);
    EXPECT_EQ(message.Command, 930);
    EXPECT_EQ(message.data, 40);
    EXPECT_EQ(message.State, 0);
    EXPECT_EQ(message.extended, 1);
    EXPECT_EQ(SpecialCommandMessage::OfItem(nullptr, 969, 161).data, 0);
}

}  // namespace
}  // namespace fenrik
