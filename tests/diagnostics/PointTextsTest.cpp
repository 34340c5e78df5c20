#include "diagnostics/InputTexts.h"
#include "diagnostics/NodeTitle.h"
#include "diagnostics/OutputTexts.h"
#include "diagnostics/PointName.h"
#include "model/CNode.h"
#include "shared/CommandTable.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

QString Name(const QString& name, std::int16_t limit, const QString& pin = QStringLiteral("F"))
{
    return PointName::DisplayName(3, pin, name, limit);
}

TEST(PointName, NumberPinAndNameStandTogether)
{
    EXPECT_EQ(Name(QStringLiteral("Wiper"), 64), QStringLiteral("3 Pin F (Wiper)"));
}

TEST(PointName, ModelWithoutPinNamesLeavesTheirPlaceEmpty)
{
    EXPECT_EQ(Name(QStringLiteral("Wiper"), 64, QString()), QStringLiteral("3 Pin  (Wiper)"));
}

// "3 Pin F (|NAME|)" has 16 characters and counts twice: within 49 a name may have 23 of them.
TEST(PointName, NameIsCutSoonerThanTheLimitAlone)
{
    const QString fits(23, QLatin1Char('n'));
    EXPECT_EQ(Name(fits, 49), QStringLiteral("3 Pin F (%1)").arg(fits));
    const QString cut = Name(QString(24, QLatin1Char('n')), 49);
    EXPECT_EQ(cut, QStringLiteral("3 Pin F (%1.)").arg(QString(24, QLatin1Char('n'))));
}

TEST(PointName, LongNameEndsInAPoint)
{
    // 49 - 16 + 6 = 39 characters of the name stay.
    const QString expected = QStringLiteral("3 Pin F (%1.)").arg(QString(39, QLatin1Char('n')));
    EXPECT_EQ(Name(QString(60, QLatin1Char('n')), 49), expected);
}

TEST(PointName, LimitOfZeroIs96)
{
    std::int16_t limit = 0;
    const QString name(70, QLatin1Char('n'));
    EXPECT_EQ(PointName::DisplayName(3, QStringLiteral("F"), name, limit), QStringLiteral("3 Pin F (%1)").arg(name));
    EXPECT_EQ(limit, 96);
}

TEST(PointName, LimitBelowTenIsTen)
{
    std::int16_t limit = -5;
    EXPECT_EQ(PointName::DisplayName(3, QStringLiteral("F"), QStringLiteral("Wiper"), limit),
              QStringLiteral("3 Pin F (.)"));
    EXPECT_EQ(limit, 10);
}

TEST(PointName, KeysHaveTwoDigitsForEachNumber)
{
    EXPECT_EQ(PointName::Key(3), QStringLiteral("O0300"));
    EXPECT_EQ(PointName::Key(32, 12), QStringLiteral("O3212"));
    EXPECT_EQ(PointName::NumberOf(QStringLiteral("O3212")), 32);
    EXPECT_EQ(PointName::LevelOf(QStringLiteral("O3212")), 12);
    EXPECT_EQ(PointName::NumberOf(QString()), 0);
}

TEST(NodeTitle, NodeWithoutANameGoesByItsNumber)
{
    CNode node;
    node.setNumber(7);
    node.setTypeID(2);
    EXPECT_EQ(NodeTitle(node), QStringLiteral("Node 7 (Petite 4x12)"));
    node.setName(QStringLiteral("   "));
    EXPECT_EQ(NodeTitle(node), QStringLiteral("Node 7 (Petite 4x12)"));
    node.setName(QStringLiteral("Cab %2"));
    EXPECT_EQ(NodeTitle(node), QStringLiteral("Cab %2 (Petite 4x12)"));
}

struct CodeRow {
    int code;
    const char* text;
};

class SwitchTypes : public testing::TestWithParam<CodeRow> {};

TEST_P(SwitchTypes, HaveTheirTexts)
{
    EXPECT_EQ(InputTexts::SwitchType(GetParam().code), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Input, SwitchTypes,
                         testing::Values(CodeRow{0, "Unavailable"}, CodeRow{1, "Momentary N/O"},
                                         CodeRow{2, "Momentary N/C"}, CodeRow{3, "Latching N/O"},
                                         CodeRow{4, "Latching N/C"}, CodeRow{5, "Momentary"}, CodeRow{6, "Latching"},
                                         CodeRow{7, "Unavailable"}, CodeRow{255, "Unavailable"}));

class OnStates : public testing::TestWithParam<CodeRow> {};

TEST_P(OnStates, HaveTheirTexts)
{
    EXPECT_EQ(InputTexts::OnState(GetParam().code), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Input, OnStates,
                         testing::Values(CodeRow{0, "Floating"}, CodeRow{7, "Floating"}, CodeRow{112, "Floating"},
                                         CodeRow{1, "Not +Batt"}, CodeRow{16, "Not +Batt"}, CodeRow{2, "Not Ground"},
                                         CodeRow{32, "Not Ground"}, CodeRow{17, "Ground"}, CodeRow{23, "Ground"},
                                         CodeRow{113, "Ground"}, CodeRow{18, "+Batt or Ground"},
                                         CodeRow{33, "+Batt or Ground"}, CodeRow{34, "+Batt"}, CodeRow{39, "+Batt"},
                                         CodeRow{114, "+Batt"}, CodeRow{3, "Unavailable"}, CodeRow{0x77, "Unavailable"},
                                         CodeRow{0x87, "Floating"}, CodeRow{255, "Unavailable"}));

TEST(InputTexts, ThreeWayIsFalseTrueOrUnavailable)
{
    EXPECT_EQ(InputTexts::ThreeWay(0), QStringLiteral("False"));
    EXPECT_EQ(InputTexts::ThreeWay(1), QStringLiteral("True"));
    EXPECT_EQ(InputTexts::ThreeWay(2), QStringLiteral("Unavailable"));
    EXPECT_EQ(InputTexts::ThreeWay(99), QStringLiteral("Unavailable"));
}

TEST(InputTexts, CommandsOutsideTheTableAreUnavailable)
{
    CommandTable commands;
    commands[1279].Name = QStringLiteral("Last");
    EXPECT_EQ(InputTexts::CommandName(1279, commands), QStringLiteral("Last"));
    for (const int command : {-1, 0, 1280, 32767})
        EXPECT_EQ(InputTexts::CommandName(command, commands), QStringLiteral("Unavailable")) << command;
}

TEST(OutputTexts, LoadShedHasOneDecimalAndNoLeadingZero)
{
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::Whole(-1)), QStringLiteral("Unavailable"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4()), QStringLiteral("None"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::FromTenThousandths(125000)), QStringLiteral("12.5v"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::Whole(12)), QStringLiteral("12.0v"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::FromTenThousandths(122500)), QStringLiteral("12.3v"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::FromTenThousandths(5000)), QStringLiteral(".5v"));
    EXPECT_EQ(OutputTexts::LoadShed(Fixed4::FromTenThousandths(99900)), QStringLiteral("10.0v"));
}

class OutputTiming : public testing::Test {
protected:
    OutputTiming()
    {
        output.Init(node, 1);
        output.setUsageCode(COutput::kByRelationship);
        output.setSequence(4);
    }

    CNode node;
    COutput output;
};

TEST_F(OutputTiming, OutputNotInUseHasNoSequence)
{
    output.setUsageCode(COutput::kNotUsed);
    output.setDelayOn(Fixed4::Whole(5));
    const OutputTexts::Timing expected{QStringLiteral("Sequence:"), QStringLiteral("Unavailable"), {}, {}};
    EXPECT_EQ(OutputTexts::TimingOf(output, true), expected);
}

TEST_F(OutputTiming, DelaysBelowASecondShowTheSequence)
{
    output.setDelayOn(Fixed4::FromTenThousandths(9999));
    const OutputTexts::Timing expected{QStringLiteral("Sequence:"), QStringLiteral("4"), {}, {}};
    EXPECT_EQ(OutputTexts::TimingOf(output, true), expected);
}

TEST_F(OutputTiming, ModelWithoutDelaysShowsTheSequence)
{
    output.setDelayOn(Fixed4::Whole(5));
    EXPECT_EQ(OutputTexts::TimingOf(output, false).on, QStringLiteral("4"));
}

TEST_F(OutputTiming, OneDelayOfASecondShowsBoth)
{
    output.setDelayOn(Fixed4::FromTenThousandths(5000));
    output.setDelayOff(Fixed4::Whole(1));
    const OutputTexts::Timing expected{QStringLiteral("On Delay:"), QStringLiteral("0.5 Seconds"),
                                       QStringLiteral("Off Delay:"), QStringLiteral("1 Seconds")};
    EXPECT_EQ(OutputTexts::TimingOf(output, true), expected);
}

TEST_F(OutputTiming, FlashingIsKnownOfOutputsInUseOnly)
{
    EXPECT_EQ(OutputTexts::Flashing(output), QStringLiteral("False"));
    output.setFlashing(5);
    EXPECT_EQ(OutputTexts::Flashing(output), QStringLiteral("True"));
    output.setUsageCode(COutput::kNameOnly);
    EXPECT_EQ(OutputTexts::Flashing(output), QStringLiteral("Unavailable"));
}

TEST(OutputTexts, LevelIsTheNumberThatTheTextBeginsWith)
{
    const std::pair<const char*, float> kRows[] = {{"50%", 50.0F}, {"12.5%", 12.5F},   {"0%", 0.0F},
                                                   {"0", 0.0F},    {"Release", -1.0F}, {"", -1.0F},
                                                   {"x", -1.0F},   {"-5", -5.0F},      {"250%", 250.0F}};
    for (const auto& [text, level] : kRows)
        EXPECT_EQ(OutputTexts::LevelOfText(QLatin1String(text)), level) << text;
}

}  // namespace
}  // namespace fenrik
