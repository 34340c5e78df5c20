// The parts of the relay that need no socket of a client.

#include "relay/Address.h"
#include "relay/RelayLog.h"
#include "relay/RelayOptions.h"
#include "relay/RelayText.h"

#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>
#include <system_error>

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

TEST(RelayAddress, IsReadAndWritten)
{
    EXPECT_EQ(Address::Parse("127.0.0.1:48051").Text(), "127.0.0.1:48051");
    EXPECT_EQ(Address::Parse("[::1]:48051").Text(), "[::1]:48051");
    EXPECT_EQ(Address::Parse("[::1]:0").Host(), "::1");
    EXPECT_EQ(Address::Parse("[::ffff:10.0.0.1]:1").Host(), "10.0.0.1");
}

class BadAddresses : public testing::TestWithParam<const char*> {};

TEST_P(BadAddresses, AreRefused)
{
    EXPECT_THROW((void)Address::Parse(GetParam()), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(Relay, BadAddresses,
                         testing::Values("", "127.0.0.1", ":48051", "127.0.0.1:", "127.0.0.1:65536", "127.0.0.1:x",
                                         "127.0.0.1:-1", "127.0.0.1:100000", "::1:48051", "999.0.0.1:1"));

TEST(RelayAddress, CountsAnIpv6NetworkAsOneAndIpv4AddressesOneByOne)
{
    const auto network = [](const char* text) { return Address::Parse(text).Network(); };
    EXPECT_EQ(network("[2001:db8:1:2::1]:1"), network("[2001:db8:1:2:ffff::9]:2"));
    EXPECT_NE(network("[2001:db8:1:2::1]:1"), network("[2001:db8:1:3::1]:1"));
    EXPECT_NE(network("10.0.0.1:1"), network("10.0.0.2:1"));
    EXPECT_EQ(network("10.0.0.1:1"), network("10.0.0.1:2"));
    EXPECT_EQ(network("[::ffff:10.0.0.1]:1"), network("10.0.0.1:2"));
}

TEST(RelayAddress, OfBothKindsCanHaveTheSamePort)
{
    const auto every = Address::Parse("0.0.0.0:0").Listen();
    const auto port = Address::OfSocket(every).Text().substr(sizeof "0.0.0.0");
    EXPECT_TRUE(Address::Parse("[::]:" + port).Listen().Valid());
}

TEST(RelayAddress, ThatIsTakenCannotBeListenedTo)
{
    const auto first = Address::Parse("127.0.0.1:0").Listen();
    EXPECT_THROW((void)Address::OfSocket(first).Listen(), std::system_error);
}

TEST(RelayText, MakesNamesOfBytes)
{
    EXPECT_EQ(CleanName(std::string("\0A\nb\x7F", 5)), "A b");
    EXPECT_EQ(CleanName("\xFF"), "\xFF");
    EXPECT_EQ(CleanName("   "), "");
}

TEST(RelayText, MakesTextForTheLog)
{
    EXPECT_EQ(LogText("Ada"), "Ada");
    EXPECT_EQ(LogText("\xE9\xFF"), "\xC3\xA9\xC3\xBF");
    EXPECT_EQ(LogText(std::string("a\0\n\x1B\x80\"\\", 7)), "a\\x00\\x0A\\x1B\\x80\\x22\\x5C");
}

TEST(RelayLog, LeavesLinesOutThatComeTooFastAndCountsThem)
{
    std::ostringstream out;
    RelayLog log(out, RelayLog::Stamp::None);
    for (int i = 0; i < int(RelayLog::kBurst) + 30; ++i)
        log.Line(5, "line");
    EXPECT_EQ(std::ranges::count(out.str(), '\n'), int(RelayLog::kBurst));
    log.Line(6, "later");
    EXPECT_THAT(out.str(), testing::EndsWith("30 lines left out\nlater\n"));
}

TEST(RelayLog, GoesOnAfterALineThatCouldNotBeWritten)
{
    std::ostringstream text;
    RelayLog log(text, RelayLog::Stamp::None);
    log.Line(0, "one");
    text.setstate(std::ios::badbit);
    log.Line(0, "two");
    EXPECT_EQ(text.str(), "one\ntwo\n");
}

TEST(RelayLog, StampsItsLinesUnlessSomebodyElseDoes)
{
    std::ostringstream plain;
    RelayLog(plain, RelayLog::Stamp::None).Always("line");
    EXPECT_EQ(plain.str(), "line\n");
    std::ostringstream stamped;
    RelayLog(stamped, RelayLog::Stamp::Time).Always("line");
    EXPECT_THAT(stamped.str(), testing::MatchesRegex("[0-9]+-[0-9]+-[0-9]+ [0-9]+:[0-9]+:[0-9]+ line\n"));
}

TEST(RateBudget, RefillsByTheSecondUpToItsMost)
{
    RateBudget budget(10, 5);
    EXPECT_TRUE(budget.Has(100));
    budget.Spend(8);
    EXPECT_FALSE(budget.Has(100.2));
    EXPECT_TRUE(budget.Has(100.4));
    EXPECT_TRUE(budget.Has(1000));
    budget.Spend(5);
    EXPECT_FALSE(budget.Has(1000));
}

}  // namespace
}  // namespace fenrik
