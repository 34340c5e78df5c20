#include "relay/Address.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <system_error>

namespace fenrik {
namespace {

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

}  // namespace
}  // namespace fenrik
