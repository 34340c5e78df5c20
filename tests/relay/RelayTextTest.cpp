#include "relay/RelayText.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

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

}  // namespace
}  // namespace fenrik
