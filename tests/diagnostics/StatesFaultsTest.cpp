#include "diagnostics/StatesFixture.h"

#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::SizeIs;

TEST_F(StatesTest, AFaultReportIsKeptByNodeAndOutput)
{
    Mount(4, 0);
    const CNode& node = Select(3, 0);
    states.UpdateDiagnostics(Request(983, 0x0305));
    EXPECT_EQ(states.FaultText().At(3, 5), QStringLiteral("Fault detected!"));
    EXPECT_EQ(node.COutputs()[5].Fault(), QStringLiteral("Fault detected!"));
    EXPECT_EQ(node.COutputs()[4].Fault(), QStringLiteral("No Faults Detected"));

    Restart();
    EXPECT_EQ(states.FaultText().At(3, 5), QStringLiteral("Fault detected!"));
    states.ClearFaults();
    EXPECT_EQ(states.FaultText().At(3, 5), QString());
}

struct FaultReport {
    const char* name;
    int data;
    int node;  ///< where it is kept, 0 for nowhere
    int output;
    bool error;
};

class FaultReports : public StatesTest, public testing::WithParamInterface<FaultReport> {};

TEST_P(FaultReports, OutsideTheSystemAreKeptOrRefused)
{
    const FaultReport& row = GetParam();
    Mount(3, 6);
    states.UpdateDiagnostics(Request(983, row.data));
    for (int node = 1; node <= FaultTable::kNodes; ++node) {
        for (int output = 1; output <= FaultTable::kOutputs; ++output)
            EXPECT_EQ(!states.FaultText().At(node, output).isEmpty(), node == row.node && output == row.output);
    }
    ASSERT_THAT(errors.reports, SizeIs(row.error ? 1 : 0));
    if (row.error) {
        EXPECT_EQ(errors.reports[0].number, ErrorNumber::kSubscriptOutOfRange);
        EXPECT_EQ(errors.reports[0].where, QStringLiteral("States:UpdateDiagnostics"));
    }
}

INSTANTIATE_TEST_SUITE_P(States, FaultReports,
                         testing::Values(FaultReport{"NoNode", 0x0005, 0, 0, false},
                                         FaultReport{"NoOutput", 0x0300, 0, 0, false},
                                         FaultReport{"Nothing", 0, 0, 0, false},
                                         FaultReport{"OutputThatTheNodeDoesNotHave", 0x0309, 3, 9, false},
                                         FaultReport{"NodeThatTheSystemDoesNotHave", 0x0901, 9, 1, false},
                                         FaultReport{"LastOfAll", 0x2020, 32, 32, false},
                                         FaultReport{"NodeAboveTheTable", 0x2101, 0, 0, true},
                                         FaultReport{"OutputAboveTheTable", 0x0121, 0, 0, true},
                                         FaultReport{"Both", 0xFFFF, 0, 0, true}),
                         [](const auto& row) { return row.param.name; });

TEST(FaultTable, HasNoSlotZero)
{
    const FaultTable table;
    EXPECT_THROW((void)table.At(0, 1), Error);
    EXPECT_THROW((void)table.At(1, 0), Error);
    EXPECT_THROW((void)table.At(33, 1), Error);
    EXPECT_THROW((void)table.At(1, 33), Error);
}

}  // namespace
}  // namespace fenrik
