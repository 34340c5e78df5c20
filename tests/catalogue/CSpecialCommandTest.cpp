#include "catalogue/CSpecialCommand.h"

#include "CatalogueHostRecorder.h"
#include "platform/Error.h"
#include "shared/CommandTable.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CSpecialCommandTest : public testing::Test {
protected:
    CSpecialCommandTest()
    {
        table[930].Name = "Node Service";
        command.MyCommand = 930;
        command.CodeMask = 0x00FF;
        command.NodeMask = 0xFF00;
        command.NodeShift = 8;
        command.TextSeperator = "- ";
        command.AddItem("Restart", 5, false, false, "", "Wrench");
        command.AddItem("Learn", 40, false, true, "Address", "Command");
        command.AddItem("Watch", 6, true, false, "#enter the address", "Lamp");
    }

    CommandTable table;
    CatalogueHostRecorder host;
    CSpecialCommand command{table, host};
};

TEST_F(CSpecialCommandTest, DataHoldsCodeAndNodeUnderTheirMasks)
{
    command.SelectCode(5 * 4, true);
    command.SetscNode(3);
    EXPECT_EQ(command.scData(), 0x0305);
}

TEST_F(CSpecialCommandTest, AMessageIsDecodedToCodeAndNode)
{
    command.SelectItem(0x0305, 0, 0, false);
    EXPECT_EQ(command.scCode(), 5);
    EXPECT_EQ(command.scNode(), 3);
    EXPECT_EQ(command.scName(), "Restart");
    EXPECT_EQ(command.scIcon(), "Wrench");
}

TEST_F(CSpecialCommandTest, TheKeyPacksCodeStateAndExtended)
{
    EXPECT_EQ(command.itemList()[1]->Code(), 161);
    command.SelectCode(161, true);
    EXPECT_EQ(command.scCode(), 40);
    EXPECT_EQ(command.scState(), 0);
    EXPECT_EQ(command.scExtended(), 1);

    command.SelectItem(6, 1, 0, true);
    EXPECT_EQ(command.scState(), 1);
    EXPECT_EQ(command.scExtended(), 0);
    EXPECT_EQ(command.scName(), "Watch");
}

TEST_F(CSpecialCommandTest, StateAndExtendedAboveOneCountAsOne)
{
    command.SelectItem(6, 7, 0, true);
    EXPECT_EQ(command.scName(), "Watch");
}

struct Layout {
    const char* name;
    std::int32_t codeMask;
    std::uint8_t codeShift;
    std::int32_t nodeMask;
    std::uint8_t nodeShift;
    std::int32_t data;
    std::int32_t code;
    std::int16_t node;
};

class Layouts : public CSpecialCommandTest, public testing::WithParamInterface<Layout> {};

TEST_P(Layouts, AreReadAndWrittenAlike)
{
    CSpecialCommand laidOut(table, host);
    laidOut.CodeMask = GetParam().codeMask;
    laidOut.CodeShift = GetParam().codeShift;
    laidOut.NodeMask = GetParam().nodeMask;
    laidOut.NodeShift = GetParam().nodeShift;

    laidOut.SelectItem(GetParam().data, 0, 0, false);

    EXPECT_EQ(laidOut.scCode(), GetParam().code);
    EXPECT_EQ(laidOut.scNode(), GetParam().node);
    EXPECT_EQ(laidOut.HasNodePart(), GetParam().nodeMask != 0);
    EXPECT_EQ(laidOut.scData(), GetParam().data & (GetParam().codeMask | GetParam().nodeMask));
}

INSTANTIATE_TEST_SUITE_P(SpecialCommand, Layouts,
                         testing::Values(Layout{"CodeLow", 0x00FF, 0, 0xFF00, 8, 0x0305, 5, 3},
                                         Layout{"CodeHigh", 0xFF00, 8, 0x001F, 0, 0x0511, 5, 17},
                                         Layout{"NoNode", 0xFFFF, 0, 0, 0, 0xFFFF, 0xFFFF, 0},
                                         Layout{"BitsBetweenAreDropped", 0x0F00, 8, 0x000F, 0, 0xF5F3, 5, 3},
                                         Layout{"NoCode", 0, 0, 0x00FF, 0, 0x0003, 0, 3},
                                         Layout{"ShiftedOut", 0xFF, 40, 0, 0, 0x00FF & 0, 0, 0}),
                         [](const auto& row) { return row.param.name; });

struct OddLayout {
    const char* name;
    std::int32_t codeMask;
    int codeShift;
    std::int32_t nodeMask;
    int nodeShift;
    std::int32_t data;
    std::int32_t code;
    std::int16_t node;
    std::int32_t written;
};

class OddLayouts : public CSpecialCommandTest, public testing::WithParamInterface<OddLayout> {};

// A damaged file can say anything; what does not fit reads and writes 0.
TEST_P(OddLayouts, AreHarmless)
{
    const OddLayout& row = GetParam();
    CSpecialCommand laidOut(table, host);
    laidOut.CodeMask = row.codeMask;
    laidOut.CodeShift = std::uint8_t(row.codeShift);
    laidOut.NodeMask = row.nodeMask;
    laidOut.NodeShift = std::uint8_t(row.nodeShift);

    laidOut.SelectItem(row.data, 0, 0, false);

    EXPECT_EQ(laidOut.scCode(), row.code);
    EXPECT_EQ(laidOut.scNode(), row.node);
    EXPECT_EQ(laidOut.scData(), row.written);
}

INSTANTIATE_TEST_SUITE_P(SpecialCommand, OddLayouts,
                         testing::Values(OddLayout{"MasksOfZero", 0, 0, 0, 0, 0xFFFF, 0, 0, 0},
                                         OddLayout{"MasksOfZeroWithShifts", 0, 255, 0, 255, 0xFFFF, 0, 0, 0},
                                         OddLayout{"ShiftsOf31", 0xFFFF, 31, 0xFFFF, 31, 0xFFFF, 0, 0, 0},
                                         OddLayout{"ShiftsOf32", 0xFFFF, 32, 0xFFFF, 32, 0xFFFF, 0, 0, 0},
                                         OddLayout{"ShiftsOf255", -1, 255, -1, 255, -1, 0, 0, 0},
                                         OddLayout{"TheTopBit", INT32_MIN, 31, 0, 0, -1, 1, 0, INT32_MIN},
                                         OddLayout{"NegativeMasks", -1, 0, -1, 0, 0xFFFF, 0xFFFF, -1, -1}),
                         [](const auto& row) { return row.param.name; });

TEST_F(CSpecialCommandTest, BitsBesideTheKeySelectNothingElse)
{
    command.SelectCode(161 | 0x40000000, true);
    EXPECT_EQ(command.scName(), "Learn");
    EXPECT_EQ(command.SelectedKey(), 161);
    command.SelectCode(-1, false);
    command.SelectCode(-1, false);
    EXPECT_EQ(command.scName(), "Node Service");
    EXPECT_EQ(command.SelectedKey(), 0x3FFFF);
}

TEST_F(CSpecialCommandTest, ANodeAboveItsMaskIsCutInTheData)
{
    command.NodeMask = 0x1F00;
    command.SelectCode(20, true);
    command.SetscNode(0x23);
    EXPECT_EQ(command.scData(), 0x0305);
}

TEST_F(CSpecialCommandTest, WithoutANodePartTheNodeStaysOutOfTheData)
{
    command.NodeMask = 0;
    command.SetscNode(3);
    command.SelectItem(0x0405, 0, 0, true);
    EXPECT_EQ(command.scNode(), 3);
    EXPECT_EQ(command.scData(), 5);
}

TEST_F(CSpecialCommandTest, AnUnlistedMessageMakesAnItemNamedAfterItsCommand)
{
    command.SelectItem(0x0263, 1, 1, false);

    EXPECT_EQ(command.scName(), "Node Service");
    EXPECT_EQ(command.scFullName(), "Node Service");
    EXPECT_EQ(command.scExtra(), "");
    EXPECT_EQ(command.scIcon(), "Info");
    EXPECT_EQ(command.scCode(), 0x63);
    EXPECT_EQ(command.scState(), 1);
    EXPECT_EQ(command.scExtended(), 1);
    EXPECT_EQ(command.scNode(), 2);
    EXPECT_EQ(command.itemList().size(), 4U);
}

TEST_F(CSpecialCommandTest, AnItemThatAMessageMadeStays)
{
    command.SelectItem(0x0263, 0, 0, false);
    command.SelectItem(0x0305, 0, 0, false);
    command.SelectItem(0x0763, 0, 0, true);

    EXPECT_EQ(command.scCode(), 0x63);
    EXPECT_EQ(command.itemList().size(), 4U);
}

TEST_F(CSpecialCommandTest, AnItemThatMustExistFallsBackToTheFirst)
{
    command.SetscNode(9);
    command.SelectCode(99 * 4, true);
    EXPECT_EQ(command.scName(), "Restart");
    EXPECT_EQ(command.scCode(), 5);
    EXPECT_EQ(command.scNode(), 9);
    EXPECT_EQ(command.itemList().size(), 3U);
}

TEST_F(CSpecialCommandTest, TheFallBackTakesTheSelectedNode)
{
    host.selectedNode = 4;
    command.SelectCode(99 * 4, true);
    EXPECT_EQ(command.scNode(), 4);

    // A message names its own node, which comes last.
    command.SelectItem(0x0763, 0, 0, true);
    EXPECT_EQ(command.scNode(), 7);
}

TEST_F(CSpecialCommandTest, AListedItemLeavesTheNodeAlone)
{
    host.selectedNode = 4;
    command.SetscNode(9);
    command.SelectCode(161, true);
    EXPECT_EQ(command.scNode(), 9);
}

TEST_F(CSpecialCommandTest, WithNoItemsNothingCanBeMadeToExist)
{
    CSpecialCommand empty(table, host);
    try {
        empty.SelectCode(4, true);
        FAIL() << "no item was selected from none";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kSubscriptOutOfRange);
    }
}

TEST_F(CSpecialCommandTest, TheFullNamePutsTheExtraBeforeTheName)
{
    command.SelectCode(161, true);
    EXPECT_EQ(command.scFullName(), "Address- Learn");
}

TEST_F(CSpecialCommandTest, TheFullNameIsTrimmed)
{
    command.AddItem("", 7, false, false, " Alone", "");
    command.SelectCode(7 * 4, true);
    EXPECT_EQ(command.scFullName(), "Alone-");
}

TEST_F(CSpecialCommandTest, AHintIsNoPartOfTheFullName)
{
    command.SelectItem(6, 1, 0, true);
    EXPECT_EQ(command.scExtra(), "#enter the address");
    EXPECT_EQ(command.scFullName(), "Watch");
}

TEST_F(CSpecialCommandTest, ItemsAreFoundAndRemovedByTheirKey)
{
    ASSERT_NE(command.GetItem(161), nullptr);
    EXPECT_EQ(command.GetItem(161)->Name(), "Learn");
    command.SelectCode(161, true);
    command.RemoveItem(161);
    command.RemoveItem(161);

    EXPECT_EQ(command.GetItem(161), nullptr);
    EXPECT_EQ(command.scName(), "");
    EXPECT_EQ(command.itemList().size(), 2U);
}

TEST_F(CSpecialCommandTest, TwoItemsOfOneKeyAreAnError)
{
    try {
        command.AddItem("Again", 5, false, false, "", "");
        FAIL() << "the second item was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kDuplicateKey);
    }
    EXPECT_EQ(command.itemList().size(), 3U);
}

}  // namespace
}  // namespace fenrik
