#include "relay/RelayOptions.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::HasSubstr;

TEST(RelayOptions, AllOfThemAreTaken)
{
    const auto options =
        RelayOptions::Parse({"--listen",     "127.0.0.1:1", "--listen",     "[::1]:2", "--consent",         "deny",
                             "--log",        "relay.log",   "--max-users",  "10",      "--max-per-address", "5",
                             "--max-body",   "200",         "--max-rate",   "300",     "--max-unsent",      "70000",
                             "--logon-time", "3",           "--stall-time", "4"});
    EXPECT_THAT(options.listen, testing::ElementsAre("127.0.0.1:1", "[::1]:2"));
    EXPECT_EQ(options.consent, Consent::Deny);
    EXPECT_EQ(options.log, "relay.log");
    EXPECT_EQ(options.limits.users, 10);
    EXPECT_EQ(options.limits.usersPerAddress, 5);
    EXPECT_EQ(options.limits.longestBody, 200u);
    EXPECT_EQ(options.limits.framesPerSecond, 300);
    EXPECT_EQ(options.limits.mostUnsent, 70000u);
    EXPECT_EQ(options.limits.logonSeconds, 3);
    EXPECT_EQ(options.limits.stallSeconds, 4);
}

TEST(RelayOptions, AskForConsentIfNothingIsSaid)
{
    EXPECT_EQ(RelayOptions::Parse({"--listen", "127.0.0.1:1"}).consent, Consent::Ask);
}

TEST(RelayOptions, HelpNamesEveryOption)
{
    EXPECT_TRUE(RelayOptions::Parse({"--help"}).help);
    EXPECT_TRUE(RelayOptions::Parse({"--version"}).version);
    for (const char* option : {"--listen", "--consent", "--log", "--max-users", "--max-per-address", "--max-body",
                               "--max-rate", "--max-unsent", "--logon-time", "--stall-time", "--help", "--version"})
        EXPECT_THAT(RelayOptions::HelpText(), HasSubstr(option));
}

class BadRelayOptions : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(BadRelayOptions, AreRefused)
{
    auto line = GetParam();
    line.insert(line.end(), {"--listen", "127.0.0.1:0"});
    EXPECT_THROW((void)RelayOptions::Parse(line), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(
    Relay, BadRelayOptions,
    testing::Values(std::vector<std::string>{"--fast"}, std::vector<std::string>{"--consent", "maybe"},
                    std::vector<std::string>{"--max-users", "0"}, std::vector<std::string>{"--max-users", "ten"},
                    std::vector<std::string>{"--max-users", "10x"}, std::vector<std::string>{"--max-users", ""},
                    std::vector<std::string>{"--max-users", "99999999999"},
                    std::vector<std::string>{"--max-body", "164"}, std::vector<std::string>{"--max-body", "32768"},
                    std::vector<std::string>{"--max-unsent", "65535"}, std::vector<std::string>{"--max-rate", "9"},
                    std::vector<std::string>{"--logon-time", "0"}));

TEST(RelayOptions, NeedAnAddressAndTheValueOfTheLastOne)
{
    EXPECT_THROW((void)RelayOptions::Parse({}), std::invalid_argument);
    EXPECT_THROW((void)RelayOptions::Parse({"--listen"}), std::invalid_argument);
}

}  // namespace
}  // namespace fenrik
