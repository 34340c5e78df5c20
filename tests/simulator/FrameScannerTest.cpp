#include "simulator/Fixtures.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = Received::Kind;

struct Found {
    Kind kind;
    ByteList bytes;
    bool operator==(const Found&) const = default;
};

void PrintTo(const Found& found, std::ostream* out)
{
    *out << int(found.kind) << ":" << testing::PrintToString(found.bytes);
}

class FrameScannerTest : public testing::Test {
protected:
    static std::vector<Found> Plain(const std::vector<Received>& items)
    {
        std::vector<Found> found;
        for (const auto& item : items)
            found.push_back({item.kind, item.bytes});
        return found;
    }
    std::vector<Found> Take(const ByteList& bytes, double now = 0) { return Plain(scanner.Take(bytes, now)); }

    FrameScanner scanner;
    const ByteList ping{0x00, 0xAE, 0x14, 0x00, 0x03, 0xC5};
};

TEST_F(FrameScannerTest, AFrameIsDecoded)
{
    const auto found = scanner.Take(ping, 0);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].frame, (Frame{901, false, false, 3}));
}

TEST_F(FrameScannerTest, AFrameCutIntoPiecesIsFoundAtItsLastByte)
{
    EXPECT_THAT(Take({0x00, 0xAE}), IsEmpty());
    EXPECT_THAT(Take({0x14, 0x00, 0x03}), IsEmpty());
    EXPECT_THAT(Take({0xC5}), ElementsAre(Found{Kind::Frame, ping}));
}

TEST_F(FrameScannerTest, TheWakeByteOutsideAFrameIsTold)
{
    EXPECT_THAT(Take({0x9E}), ElementsAre(Found{Kind::Wake, {0x9E}}));
}

TEST_F(FrameScannerTest, TheWakeByteInsideAFrameIsData)
{
    const auto frame = ToBytes({12, false, false, 0x9E9E});
    EXPECT_THAT(Take(frame), ElementsAre(Found{Kind::Frame, frame}));
}

TEST_F(FrameScannerTest, NoiseBeforeAFrameIsToldAndTheFrameIsFound)
{
    auto bytes = ByteList{0x11, 0x00, 0x22};
    bytes.insert(bytes.end(), ping.begin(), ping.end());
    EXPECT_THAT(Take(bytes), ElementsAre(Found{Kind::Unparsed, {0x11, 0x00, 0x22}}, Found{Kind::Frame, ping}));
}

TEST_F(FrameScannerTest, AFrameInsideATornFrameIsFound)
{
    auto bytes = ByteList{0x00, 0xAE, 0x14};
    bytes.insert(bytes.end(), ping.begin(), ping.end());
    EXPECT_THAT(Take(bytes), ElementsAre(Found{Kind::Unparsed, {0x00, 0xAE, 0x14}}, Found{Kind::Frame, ping}));
}

TEST_F(FrameScannerTest, AWrongSumMakesNoFrame)
{
    EXPECT_THAT(Take({0x00, 0xAE, 0x14, 0x01, 0x03, 0xC5}),
                ElementsAre(Found{Kind::Unparsed, {0x00, 0xAE, 0x14, 0x01, 0x03, 0xC5}}));
}

TEST_F(FrameScannerTest, HalfAFrameIsGivenUpAfterAWhile)
{
    (void)Take({0x00, 0xAE, 0x14}, 1.0);
    EXPECT_DOUBLE_EQ(scanner.Deadline(), 1.0 + FrameScanner::kPatience);
    EXPECT_THAT(Plain(scanner.Expire(1.05)), IsEmpty());
    EXPECT_THAT(Plain(scanner.Expire(1.2)), ElementsAre(Found{Kind::Unparsed, {0x00, 0xAE, 0x14}}));
    EXPECT_EQ(scanner.Deadline(), FrameScanner::kNever);
}

TEST_F(FrameScannerTest, AWakeByteBehindHalfAFrameIsHeardWhenThatIsGivenUp)
{
    (void)Take({0x00, 0xAE, 0x9E}, 1.0);
    EXPECT_THAT(Plain(scanner.Expire(1.2)),
                ElementsAre(Found{Kind::Unparsed, {0x00, 0xAE}}, Found{Kind::Wake, {0x9E}}));
}

}  // namespace
}  // namespace fenrik
