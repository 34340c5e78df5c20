// The live views beside the list.

#include "e2e/ToolTest.h"

namespace fenrik {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Panels : public ToolTest {
protected:
    [[nodiscard]] bool Shows(const char* text) const { return Face("PicMiscFace").find(text) != std::string::npos; }
    [[nodiscard]] bool ShowsDim(const char* text) const
    {
        return Face("PicMiscFace", "dimText").find(text) != std::string::npos;
    }
};

struct Reading {
    const char* statement;
    const char* name;
    const char* value;
};

constexpr Reading kReadings[] = {
    {"send 300 on false 276", "Battery Voltage", "27.6"},
    {"send 303 on false 88", "Coolant Temperature", "88\u00B0"},
    {"send 306 on false 1450", "Engine Speed", "1450"},
    {"send 317 on false 65501", "Outside Temperature", "-3.5\u00B0"},
};

TEST_F(Panels, ShowAnalogValuesInTheOrderInWhichTheyWereFirstHeard)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int lines = LineCount();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 300 on false 121"));
    for (const Reading& reading : kReadings)
        ASSERT_NO_FATAL_FAILURE(vehicle.Control(reading.statement));
    ASSERT_TRUE(Eventually([this] { return Face("PicAnalogFace").find("Outside") != std::string::npos; }));

    const QStringList rows = QString::fromStdString(Face("PicAnalogFace")).split(QLatin1Char('\n'));
    ASSERT_GT(rows.size(), qsizetype(std::size(kReadings)));
    for (std::size_t i = 0; i < std::size(kReadings); ++i) {
        const std::string row = rows[qsizetype(i)].trimmed().toStdString();
        EXPECT_THAT(row, testing::StartsWith(kReadings[i].name));
        EXPECT_THAT(row, testing::EndsWith(std::string(" ") + kReadings[i].value));
    }
    EXPECT_EQ(LineCount(), lines) << "measured values are not listed";
}

TEST_F(Panels, LightTheSyncLampForAMomentAndListNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int lines = LineCount();
    ASSERT_TRUE(ShowsDim("[Sync]"));
    // So many that the lamp is lit for longer than one look takes.
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("burst 500 of 980 off true 1"));
    EXPECT_TRUE(Eventually([this] { return Shows("[Sync]") && !ShowsDim("[Sync]"); }));
    EXPECT_TRUE(Eventually([this] { return ShowsDim("[Sync]"); }));
    EXPECT_EQ(LineCount(), lines);
}

TEST_F(Panels, ShowTheLoadShedLevelOfANodeThatReportedIt)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    ASSERT_TRUE(ShowsDim("N:03 L=0"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("shed 3 2"));
    ASSERT_TRUE(Eventually([this] { return Shows("N:03 L=2"); })) << Face("PicMiscFace");
    EXPECT_FALSE(ShowsDim("N:03"));
    EXPECT_TRUE(ShowsDim("N:04 L=0"));
}

TEST_F(Panels, CountNoiseAndRaiseTheMarkForAMoment)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    ASSERT_TRUE(Shows("PC 00000"));
    // Each 16 bytes without a frame among them count once.
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("noise 40"));
    ASSERT_TRUE(Eventually([this] { return Shows("PC 00002"); })) << Face("PicMiscFace");
    EXPECT_TRUE(Shows("<- PC ->"));
    EXPECT_TRUE(Eventually([this] { return ShowsDim("->    <-"); }));

    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 59 on"));
    EXPECT_TRUE(Eventually([this] { return Line(LineCount() - 1).starts_with("Front Door Is Open|"); }))
        << "the frame behind the noise is found";
    EXPECT_TRUE(Shows("PC 00002"));
}

}  // namespace
}  // namespace fenrik
