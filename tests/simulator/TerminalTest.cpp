#include "simulator/Terminal.h"
#include "simulator/Device.h"

#include <gmock/gmock.h>
#include <sys/ioctl.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TerminalTest : public testing::Test {
protected:
    ByteList Read()
    {
        ByteList buffer(100);
        buffer.resize(terminal.Read(buffer));
        return buffer;
    }

    Terminal terminal;
};

TEST_F(TerminalTest, IsRawBeforeAnybodyOpensIt)
{
    const Device device(terminal.Device());
    ASSERT_TRUE(device.Open());
    const auto line = device.Line();
    EXPECT_EQ(line.c_lflag & tcflag_t(ECHO | ICANON | ISIG), 0u);
    EXPECT_EQ(line.c_oflag & tcflag_t(OPOST), 0u);
    EXPECT_EQ(line.c_iflag & tcflag_t(IXON | ICRNL | ISTRIP), 0u);
}

TEST_F(TerminalTest, CarriesEveryByteBothWays)
{
    const Device device(terminal.Device());
    ByteList all(256);
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = std::uint8_t(i);
    EXPECT_EQ(terminal.Write(all), all.size());
    EXPECT_EQ(device.Read(256), all);
    ASSERT_TRUE(device.Write({0x00, 0x0D, 0x0A, 0x11, 0x13, 0x03, 0xFF}));
    EXPECT_THAT(Read(), ElementsAre(0x00, 0x0D, 0x0A, 0x11, 0x13, 0x03, 0xFF));
}

TEST_F(TerminalTest, ReadsNothingWithoutWaiting)
{
    EXPECT_THAT(Read(), IsEmpty());
}

TEST_F(TerminalTest, KnowsWhetherAProgramHasItOpen)
{
    ASSERT_GE(terminal.UsersHandle(), 0);
    EXPECT_FALSE(terminal.Heard());
    Device first(terminal.Device());
    EXPECT_TRUE(terminal.NoteUsers());
    EXPECT_TRUE(terminal.Heard());
    Device second(terminal.Device());
    first.Close();
    EXPECT_FALSE(terminal.NoteUsers());
    EXPECT_TRUE(terminal.Heard());
    second.Close();
    EXPECT_TRUE(terminal.NoteUsers());
    EXPECT_FALSE(terminal.Heard());
}

TEST_F(TerminalTest, GoesOnWorkingWhenItIsClosedAndOpenedAgain)
{
    Device first(terminal.Device());
    first.Close();
    EXPECT_THAT(Read(), IsEmpty());
    const Device second(terminal.Device());
    ASSERT_TRUE(second.Write({1, 2}));
    EXPECT_THAT(Read(), ElementsAre(1, 2));
}

TEST_F(TerminalTest, WhatOneUserLeftUnreadTheNextDoesNotSee)
{
    Device first(terminal.Device());
    (void)terminal.NoteUsers();
    ASSERT_EQ(terminal.Write(ByteList{1, 2, 3}), 3u);
    ASSERT_EQ(first.Read(1), ByteList{1});
    first.Close();
    (void)terminal.NoteUsers();
    const Device second(terminal.Device());
    (void)terminal.NoteUsers();
    ASSERT_EQ(terminal.Write(ByteList{9}), 1u);
    EXPECT_EQ(second.Read(1), ByteList{9});
}

TEST_F(TerminalTest, WhatIsSaidWhileNobodyHasItOpenIsLost)
{
    Device first(terminal.Device());
    (void)terminal.NoteUsers();
    first.Close();
    (void)terminal.NoteUsers();
    EXPECT_EQ(terminal.Write(ByteList{1, 2}), 2u);
    const Device second(terminal.Device());
    EXPECT_EQ(terminal.Write(ByteList{9}), 1u);  // before anybody has taken note of it
    EXPECT_EQ(second.Read(1), ByteList{9});
}

TEST_F(TerminalTest, AFullTerminalTakesNothingAndDoesNotWait)
{
    const Device device(terminal.Device());
    const ByteList block(4096, 7);
    std::size_t taken = 0;
    for (std::size_t now = 1; now > 0 && taken < 10'000'000; taken += now)
        now = terminal.Write(block);
    EXPECT_EQ(terminal.Write(block), 0u);
    EXPECT_GT(taken, 0u);
    EXPECT_EQ(device.Read(taken).size(), taken);
}

}  // namespace
}  // namespace fenrik
