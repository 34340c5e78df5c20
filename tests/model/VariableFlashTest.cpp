#include "model/VariableFlash.h"

#include <gtest/gtest.h>

#include <vector>

namespace fenrik {
namespace {

/// A structure in memory; an address behind it reads as zeros.
class VariableFlashTest : public testing::Test {
protected:
    int Walk(std::initializer_list<int> path, const VariableFlash::Form& form = {})
    {
        const std::vector<int> indices(path);
        return flash.Walk(form, indices);
    }

    unsigned At(int address) { return address < int(bytes.size()) ? bytes[std::size_t(address)] : 0u; }

    std::vector<std::uint8_t> bytes;
    int reads = 0;
    VariableFlash flash{[this](int address) {
        ++reads;
        EXPECT_GE(address, 0);
        EXPECT_LT(address, VariableFlash::kSize);
        return std::uint16_t(At(address + 1) << 8 | At(address));
    }};
};

TEST_F(VariableFlashTest, ReadsBytesWordsAndLongs)
{
    bytes = {0x11, 0x22, 0x33, 0x44};
    EXPECT_EQ(flash.Byte(0), 0x11);
    EXPECT_EQ(flash.Word(0, true), 0x1122);
    EXPECT_EQ(flash.Word(0, false), 0x2211);
    EXPECT_EQ(flash.Long(0, true), 0x11223344u);
    EXPECT_EQ(flash.Long(0, false), 0x22114433u);
}

TEST_F(VariableFlashTest, ReadsEntriesOfEachWidth)
{
    bytes = {0xC5, 0x06, 0x07, 0x08};
    const auto one = flash.ReadEntry(0, {1, 3, true});
    EXPECT_TRUE(one.uncountedFirst);
    EXPECT_TRUE(one.hasSubEntries);
    EXPECT_EQ(one.size, 15);
    EXPECT_EQ(flash.ReadEntry(0, {2, 1, true}).size, 0x0506);
    EXPECT_EQ(flash.ReadEntry(0, {4, 1, true}).size, 0x05060708);
}

TEST_F(VariableFlashTest, FindsAnEntryByItsIndices)
{
    //       0: root of 12    2: first of 2  4: second of 6    6: 2        8: 2        10: third
    bytes = {0x40, 12, 0, 2, 0x40, 6, 0, 2, 0, 2, 0, 2};
    EXPECT_EQ(Walk({}), 0);
    EXPECT_EQ(Walk({0}), 2);
    EXPECT_EQ(Walk({1}), 4);
    EXPECT_EQ(Walk({1, 1}), 8);
    EXPECT_EQ(Walk({2}), 10);
}

TEST_F(VariableFlashTest, PassesASubEntryThatIsNotCounted)
{
    bytes = {0xC0, 8, 0, 2, 0, 2, 0, 2};
    EXPECT_EQ(Walk({0}), 4);
    EXPECT_EQ(Walk({1}), 6);
}

TEST_F(VariableFlashTest, FindsNothingInAnEntryWithoutSubEntries)
{
    bytes = {0, 12, 0, 2};
    EXPECT_EQ(Walk({0}), -1);
}

TEST_F(VariableFlashTest, FindsNothingWhereAnEntryIsSmallerThanItself)
{
    bytes = {0x40, 1, 0, 2};
    EXPECT_EQ(Walk({}), -1);
    bytes = {0x40, 12, 0, 0};
    EXPECT_EQ(Walk({0}), -1);
    bytes.clear();
    EXPECT_EQ(Walk({0}), -1);
}

TEST_F(VariableFlashTest, ComesToAnEndInAStructureThatPointsAtItself)
{
    bytes = {0x40, 12, 0, 0};
    EXPECT_EQ(Walk({1000}), -1);
    EXPECT_LE(reads, 1002);
}

TEST_F(VariableFlashTest, StaysInsideTheMemory)
{
    bytes.assign(VariableFlash::kSize, 0xFF);
    EXPECT_EQ(Walk({0}), 2 + 0x3FFF);
    EXPECT_EQ(Walk({1}), -1);
    EXPECT_EQ(Walk({7, 7, 7}), -1);
    bytes.assign(VariableFlash::kSize, 0x7F);
    EXPECT_EQ(Walk({5}), -1);
}

}  // namespace
}  // namespace fenrik
