#include "simulator/Options.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace fenrik {
namespace {

TEST(SimulatorOptions, AllOfThemAreTaken)
{
    const auto options = Options::Parse({"--port", "5", "--scenario", "a.txt", "--log", "b.txt", "--pace", "--control",
                                         "--duration", "2.5", "--seed", "7"});
    EXPECT_EQ(options.port, 5);
    EXPECT_EQ(options.scenario, "a.txt");
    EXPECT_EQ(options.log, "b.txt");
    EXPECT_TRUE(options.paced);
    EXPECT_TRUE(options.control);
    EXPECT_EQ(options.duration, 2.5);
    EXPECT_EQ(options.seed, 7u);
    EXPECT_EQ(options.PortName(), "COM5");
}

TEST(SimulatorOptions, ALinkMayTakeThePlaceOfAPort)
{
    const auto options = Options::Parse({"--device-link", "/somewhere/bus"});
    EXPECT_EQ(options.LinkPath(), "/somewhere/bus");
    EXPECT_EQ(options.PortName(), "/somewhere/bus");
}

TEST(SimulatorOptions, HelpNeedsNothingElseAndNamesEveryOption)
{
    EXPECT_TRUE(Options::Parse({"--help"}).help);
    for (const char* option :
         {"--port", "--device-link", "--scenario", "--log",  "--pace",         "--control", "--duration",
          "--seed", "--help",        "--describe", "--road", "--write-images", "--system",  "--relay",
          "--name", "--grant",       "--deny",     "--ask",  "--modem",        "--legacy"})
        EXPECT_THAT(Options::HelpText(), testing::HasSubstr(option));
}

TEST(SimulatorOptions, TellingNodesNeedsNoPort)
{
    const auto options =
        Options::Parse({"--describe", "--road", "memory", "--write-images", "/images", "--system", "Bus 12"});
    EXPECT_TRUE(options.describe);
    EXPECT_EQ(options.road, Road::Memory);
    EXPECT_EQ(options.writeImages, "/images");
    EXPECT_EQ(options.system, "Bus 12");
    EXPECT_FALSE(options.RunsVehicle());
    EXPECT_TRUE(Options::Parse({"--port", "5"}).RunsVehicle());
    EXPECT_FALSE(Options::Parse({"--describe"}).road);
}

TEST(SimulatorOptions, TheOlderNetworkHasAPortAndNothingToDescribe)
{
    EXPECT_EQ(Options::Parse({"--port", "5", "--legacy"}).NetworkKind(), Network::Fenrik98);
    EXPECT_EQ(Options::Parse({"--port", "5"}).NetworkKind(), Network::Fenrik2000);
    EXPECT_THROW(Options::Parse({"--legacy", "--relay", "localhost:1"}), std::invalid_argument);
    EXPECT_THROW(Options::Parse({"--legacy", "--describe"}), std::invalid_argument);
    EXPECT_THROW(Options::Parse({"--legacy"}), std::invalid_argument);
}

TEST(SimulatorOptions, ARelayMayTakeThePlaceOfAPort)
{
    const auto options = Options::Parse({"--relay", "localhost:48051", "--name", "Bob", "--deny"});
    EXPECT_EQ(options.relay, "localhost:48051");
    EXPECT_EQ(options.name, "Bob");
    EXPECT_EQ(options.access, AccessAnswer::Deny);
    EXPECT_FALSE(options.Controlled());
    EXPECT_TRUE(Options::Parse({"--relay", "localhost:48051", "--ask"}).Controlled());
    EXPECT_EQ(Options::Parse({"--relay", "localhost:48051"}).access, AccessAnswer::Grant);
    EXPECT_TRUE(Options::Parse({"--modem", "--port", "6"}).modem);
    EXPECT_FALSE(Options::Parse({"--port", "6"}).modem);
}

class BadOptions : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(BadOptions, AreRefused)
{
    EXPECT_THROW((void)Options::Parse(GetParam()), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(
    SimulatorOptions, BadOptions,
    testing::Values(std::vector<std::string>{}, std::vector<std::string>{"--port"},
                    std::vector<std::string>{"--port", "0"}, std::vector<std::string>{"--describe", "--road", "short"},
                    std::vector<std::string>{"--road", "query"}, std::vector<std::string>{"--write-images"},
                    std::vector<std::string>{"--port", "5", "--relay", "localhost:48051"},
                    std::vector<std::string>{"--modem"},
                    std::vector<std::string>{"--modem", "--relay", "localhost:48051"},
                    std::vector<std::string>{"--port", "17"}, std::vector<std::string>{"--port", "x"},
                    std::vector<std::string>{"--port", "5", "--duration", "-1"},
                    std::vector<std::string>{"--port", "5", "--fast"}));

}  // namespace
}  // namespace fenrik
