#include "legacy/Greeting98.h"

#include "legacy/LegacyFixture.h"
#include "support/ScriptedPump.h"

namespace fenrik {
namespace {

class GreetingTest : public PanelTest {
protected:
    [[nodiscard]] double Elapsed() const { return double(clock.Now().milliseconds - start.milliseconds) / 1000; }
    [[nodiscard]] bool IsDim() const { return analogFace.DimText() == analogFace.Text(); }

    FakeClock clock;
    Moment start = clock.Now();
    ScriptedPump pump{clock};
    VersionInfo version{1, 2, 34, QString()};
    Greeting98 greeting{graphics, pump, version};
};

TEST_F(GreetingTest, StandsOnTheSecondFourthAndSixthLine)
{
    greeting.Play();
    EXPECT_EQ(Analog(1), std::string(32, ' '));
    EXPECT_EQ(Analog(2), "    Harnwick Technologies Inc.  ");
    EXPECT_EQ(Analog(3), std::string(32, ' '));
    EXPECT_EQ(Analog(4), "     Fenrik Diagnostic Tool     ");
    EXPECT_EQ(Analog(6), "        Version   1.2.34        ");
    EXPECT_FALSE(IsDim());
}

TEST_F(GreetingTest, IsDarkForHalfASecondAndThenLit)
{
    bool dimAtFirst = false;
    bool dimLater = true;
    pump.After(0.4, [&] { dimAtFirst = IsDim(); });
    pump.After(0.4, [&] { dimLater = IsDim(); });
    greeting.Play();
    EXPECT_TRUE(dimAtFirst);
    EXPECT_FALSE(dimLater);
    EXPECT_NEAR(Elapsed(), 1.0, 0.01);
}

TEST_F(GreetingTest, IsPlayedOnce)
{
    greeting.Play();
    graphics.ClearFace();
    greeting.Play();
    EXPECT_TRUE(AnalogIsBlank());
    EXPECT_NEAR(Elapsed(), 1.0, 0.01);
}

TEST_F(GreetingTest, AConnectionInItsMiddleEndsIt)
{
    pump.After(0.3, [this] {
        panels.ClearAnalog();
        panels.AnalogValue(1, "Volts", 12);
    });
    greeting.Play();
    EXPECT_EQ(Analog(1), "Volts                   12.0    ");
    EXPECT_EQ(Analog(2), std::string(32, ' '));
}

TEST_F(GreetingTest, AConnectionBeforeItComesFirst)
{
    panels.ClearAnalog();
    greeting.Play();
    EXPECT_TRUE(AnalogIsBlank());
    EXPECT_EQ(Elapsed(), 0);
}

TEST_F(GreetingTest, TheProgramsEndEndsIt)
{
    pump.After(0.2, [this] { pump.Stop(); });
    greeting.Play();
    EXPECT_TRUE(IsDim());
    EXPECT_NEAR(Elapsed(), 0.2, 0.01);
}

TEST_F(GreetingTest, AVersionThatIsTooLongIsCutAtTheLastColumn)
{
    const VersionInfo endless(2000000000, 2000000000, 2000000000, QString());
    Greeting98 other(graphics, pump, endless);
    other.Play();
    EXPECT_EQ(Analog(6), "        Version   2000000000.200");
}

}  // namespace
}  // namespace fenrik
