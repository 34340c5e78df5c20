#include "model/NodeTypes.h"

#include "model/CNode.h"
#include "support/Printers.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAreArray;

/// One model, written down a second time so that a slip in the table shows. Pins joined by blanks; flags as letters R
/// (can be refreshed), D (output delays), V (variable flash).
struct Model {
    std::int16_t typeID;
    const char* name;
    int inputs;
    int outputs;
    int bits;
    const char* flags;
    const char* inputLabel;
    const char* outputLabel;
    std::vector<int> map;
    const char* inputPins;
    const char* outputPins;
};

const std::vector<int> kNoMap(13, 0);
const std::vector<int> kBig{0x1760, 0x1781, 0x1980, 0x1A01, 0x81, 0x88, 0xD80, 2, 0xE01, 0xE00, 0xE02, 3, 0x3400};
const char* const kBigIn = "34 35 17 18 19 20 8 21 33 16 6 2 9 10 22 23";
const char* const kBigOut = "R S F T G U H V L B M C N D O P Q E A J W X K 7 14 11";
const char* const kHcOut =
    "A1 A2 A3 A4 A5 A6 A7 A8 B1 B2 B3 B4 B5 B6 B7 B8 C1 C2 C3 C6 C7 C8 D1 D2 D3 D6 D7 D8 C4 C5 D4 D5";
const char* const kNotNow = "This information is not available to Diagnostics at this time.";

const Model kModels[] = {
    {0, "Brontes", 16, 26, 1, "RD", "", "", kBig, kBigIn, kBigOut},
    {1, "Lumen", 0, 0, 0, "", "The Lumen node does not have any physical inputs.",
     "The Lumen node does not have any physical outputs.", kNoMap, "", ""},
    {2,
     "Petite 4x12",
     4,
     12,
     2,
     "RD",
     "",
     "",
     {0xC60, 0xC80, 0, 0xD00, 0x81, 0x89, 0x980, 7, 0x982, 0x983, 0x984, 7, 0x2500},
     "3 2 10 4",
     "1 2 3 4 5 6 7 8 9 10 11 12"},
    {3, "Bridge", 0, 0, 0, "", "The Bridge node does not have any physical inputs.",
     "The Bridge node does not have any physical outputs.", kNoMap, "", ""},
    {4, "Lumen", 0, 0, 0, "", "The Lumen node does not have any physical inputs.",
     "The Lumen node does not have any physical outputs.", kNoMap, "", ""},
    {5,
     "Petite 16 Input",
     16,
     0,
     2,
     "R",
     "",
     "The Petite 16x0 node does not have any physical outputs.",
     {0xC60, 0xC80, 0, 0, 0, 0, 0x980, 7, 0x982, 0x983, 0x984, 7, 0},
     "B1 B2 B3 B4 B5 B6 B7 B8 B9 B10 B11 B12 A1 A2 A3 A4",
     ""},
    {6, "Comfort Module", 3, 8, 1, "RV", "", "", kNoMap, "J3-12 J3-11 J3-5",
     "J1-1 J1-2 J3-13 J3-14 J3-15 J3-16 J3-17 J3-18"},
    {7, "Lumen III", 0, 0, 0, "", "The Lumen III node does not have any physical inputs.",
     "The Lumen III node does not have any physical outputs.", kNoMap, "", ""},
    {8, "QUAD Controller", 0, 0, 0, "", kNotNow, "The QUAD Controller node does not have any physical outputs.", kNoMap,
     "", ""},
    {9, "Brontes04", 16, 26, 1, "RD", "", "", kBig, kBigIn, kBigOut},
    {10, "Petite 8-16", 8, 16, 1, "RD", "", "", kNoMap, "", ""},
    {11, "Trip Recorder", 0, 0, 0, "", kNotNow, kNotNow, kNoMap, "", ""},
    {12, "Lumen III Touch", 0, 0, 0, "", "The Lumen III node does not have any physical inputs.",
     "The Lumen III node does not have any physical outputs.", kNoMap, "", ""},
    {15, "Lumen IV", 0, 0, 0, "", "The Lumen III node does not have any physical inputs.",
     "The Lumen III node does not have any physical outputs.", kNoMap, "", ""},
    {16, "Brontes-HC", 16, 32, 1, "RD", "", "", kNoMap, "E1 E2 E3 E4 E5 E6 E7 E8 E9 E10 E11 E12 E13 E14 E15 E16",
     kHcOut},
    {255, "Brontes", 16, 26, 1, "RD", "", "", kBig, kBigIn, kBigOut},
    {254, "Unknown Type", 0, 0, 0, "", "Inputs not defined for Unknown Node Type.",
     "Outputs not defined for Unknown Node Type.", kNoMap, "", ""},
};

std::vector<int> Numbers(const MemoryMap& map)
{
    return {map.NodeNameAddr, map.InputNameAddr,     map.SpareNameAddr,   map.OutputNameAddr, map.OutputRecordAddr,
            map.RelationAddr, map.InCommandAddr,     map.InCommandStride, map.SwitchTypeAddr, map.OnStateAddr,
            map.ThreeWayAddr, map.InputRecordStride, map.DelayTableAddr};
}

QStringList Pins(const char* joined)
{
    return QString::fromLatin1(joined).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

class Models : public testing::TestWithParam<Model> {
protected:
    /// A node that had another type before.
    Models() { node.setTypeID(GetParam().typeID); }
    CNode node;
};

TEST_P(Models, HaveTheirNamesCountsAndLabels)
{
    const Model& model = GetParam();
    const QString flags = QString::fromLatin1(model.flags);
    EXPECT_EQ(node.typeID(), model.typeID);
    EXPECT_EQ(node.TypeName(), QString::fromLatin1(model.name));
    EXPECT_EQ(node.Inputs(), model.inputs);
    EXPECT_EQ(node.Outputs(), model.outputs);
    EXPECT_EQ(node.bits_per_input(), model.bits);
    EXPECT_EQ(node.Refreshable(), flags.contains(QLatin1Char('R')));
    EXPECT_EQ(node.OutputDelay(), flags.contains(QLatin1Char('D')));
    EXPECT_EQ(node.VFlashSupport(), flags.contains(QLatin1Char('V')));
    EXPECT_EQ(node.DiagInputLabel(), QString::fromLatin1(model.inputLabel));
    EXPECT_EQ(node.DiagOutputLabel(), QString::fromLatin1(model.outputLabel));
}

TEST_P(Models, HaveTheirMemoryMaps)
{
    EXPECT_THAT(Numbers(node.Map()), ElementsAreArray(GetParam().map));
}

TEST_P(Models, HaveOneObjectForEachPoint)
{
    ASSERT_EQ(node.CDigitalInputs().Count(), GetParam().inputs);
    ASSERT_EQ(node.COutputs().Count(), GetParam().outputs);
    for (int number = 1; number <= GetParam().inputs; ++number)
        EXPECT_EQ(node.CDigitalInputs().PositionOf(QStringLiteral("Input %1").arg(number)), number);
    for (int number = 1; number <= GetParam().outputs; ++number)
        EXPECT_EQ(node.COutputs().PositionOf(QStringLiteral("Output %1").arg(number)), number);
}

TEST_P(Models, HaveTheirPins)
{
    const QStringList inputs = Pins(GetParam().inputPins);
    const QStringList outputs = Pins(GetParam().outputPins);
    for (int number = 1; number <= 33; ++number) {
        EXPECT_EQ(NodeTypes::InputPin(GetParam().typeID, number), inputs.value(number - 1)) << number;
        EXPECT_EQ(NodeTypes::OutputPin(GetParam().typeID, number), outputs.value(number - 1)) << number;
    }
    EXPECT_EQ(NodeTypes::InputPin(GetParam().typeID, 0), QString());
    for (int number = 1; number <= node.Inputs(); ++number)
        EXPECT_EQ(node.CDigitalInputs()[number].Pin(), inputs.value(number - 1));
    for (int number = 1; number <= node.Outputs(); ++number)
        EXPECT_EQ(node.COutputs()[number].Pin(), outputs.value(number - 1));
}

TEST_P(Models, HaveTheirKindsOfPulseWidth)
{
    const bool first = GetParam().typeID == 0 || GetParam().typeID == 9;
    for (int number = 1; number <= node.Outputs(); ++number) {
        const bool capable = number == 1 || number == 2 || number == 15 || number == 16;
        EXPECT_EQ(node.COutputs()[number].PWMKind(), first ? int(capable) : 2) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(NodeTypes, Models, testing::ValuesIn(kModels),
                         [](const auto& row) { return "Type" + std::to_string(row.param.typeID); });

class NumbersWithoutModel : public testing::TestWithParam<int> {};

TEST_P(NumbersWithoutModel, EndAsUnknown)
{
    CNode node;
    node.setTypeID(2);
    node.setTypeID(std::int16_t(GetParam()));
    EXPECT_EQ(node.typeID(), 254);
    EXPECT_EQ(node.TypeName(), QStringLiteral("Unknown Type"));
    EXPECT_EQ(node.COutputs().Count(), 0);
    EXPECT_EQ(node.bits_per_input(), 0);
}

INSTANTIATE_TEST_SUITE_P(NodeTypes, NumbersWithoutModel, testing::Values(13, 14, 17, 128, 253, 256, 32767, -1, -32768));

TEST(TypeOfANode, SetAgainKeepsItsPoints)
{
    CNode node;
    node.setTypeID(2);
    node.COutputs()[1].setName(QStringLiteral("Horn"));
    node.CDigitalInputs()[1].StateOr(1);
    node.setVFlashSupport(true);
    node.setTypeID(2);
    EXPECT_EQ(node.COutputs()[1].Name(), QStringLiteral("Horn"));
    EXPECT_EQ(node.CDigitalInputs()[1].State(), 1);
    EXPECT_TRUE(node.VFlashSupport());
}

TEST(TypeOfANode, ChangedLosesEveryPoint)
{
    CNode node;
    node.setTypeID(0);
    node.COutputs()[1].setName(QStringLiteral("Horn"));
    node.setTypeID(9);
    EXPECT_EQ(node.COutputs()[1].Name(), QStringLiteral("Output 1"));
}

TEST(TypeOfANode, KeepsTheInputWidthForTwoModelsThatHaveNone)
{
    for (const std::int16_t type : {std::int16_t(8), std::int16_t(11)}) {
        CNode node;
        node.setTypeID(type);
        EXPECT_EQ(node.bits_per_input(), 0);
        node.setTypeID(2);
        node.setTypeID(type);
        EXPECT_EQ(node.bits_per_input(), 2);
    }
}

TEST(TypeOfANode, IsExplainedWhileItIsNotKnown)
{
    const CNode node;
    EXPECT_EQ(node.DiagInputLabel(), QStringLiteral("Inputs not defined for Unknown Node Type."));
}

TEST(TypeOfANode, LosesItsPointsToClearCollections)
{
    CNode node;
    node.setTypeID(2);
    node.ClearCollections();
    EXPECT_EQ(node.CDigitalInputs().Count(), 0);
    EXPECT_EQ(node.COutputs().Count(), 0);
    EXPECT_EQ(node.Outputs(), 12);
}

}  // namespace
}  // namespace fenrik
