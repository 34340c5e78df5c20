#include "pipe/PipeReader.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using Found = PipeReader::Found;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Header(int preamble, int type, int length)
{
    const auto both = [](int value) { return PipeNumber(value).substr(0, 2); };
    return both(preamble) + both(type) + both(length);
}

std::vector<std::string> TakeBodies(PipeReader& reader)
{
    std::vector<std::string> bodies;
    PipeFrame frame;
    while (reader.Next(frame) == Found::Frame)
        bodies.push_back(frame.body);
    return bodies;
}

TEST(PipeReader, GivesTypeAndBody)
{
    PipeReader reader;
    const auto bytes = EncodePipeFrame(PipeFrameType::frameChat, std::string("a\0b\xFF", 4));
    EXPECT_EQ(reader.Append(bytes), bytes.size());
    PipeFrame frame;
    ASSERT_EQ(reader.Next(frame), Found::Frame);
    EXPECT_EQ(frame.type, PipeFrameType::frameChat);
    EXPECT_EQ(frame.body, std::string("a\0b\xFF", 4));
    EXPECT_EQ(reader.Next(frame), Found::Nothing);
    EXPECT_EQ(reader.Held(), 0u);
}

TEST(PipeReader, GivesTheSameFramesWhereverTheStreamIsCut)
{
    const auto bytes = EncodePipeFrame(PipeFrameType::frameChat, "one") +
                       EncodePipeFrame(PipeFrameType::frameChat, "") +
                       EncodePipeFrame(PipeFrameType::frameNetworkMessage, "123456");
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        PipeReader reader;
        reader.Append(bytes.substr(0, cut));
        auto bodies = TakeBodies(reader);
        reader.Append(bytes.substr(cut));
        for (auto& body : TakeBodies(reader))
            bodies.push_back(body);
        EXPECT_THAT(bodies, ElementsAre("one", "", "123456")) << cut;
    }
}

TEST(PipeReader, WaitsForEachByteOfAFrame)
{
    PipeReader reader;
    const auto bytes = EncodePipeFrame(PipeFrameType::frameChat, "abc");
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        reader.Append(bytes.substr(i, 1));
        PipeFrame frame;
        EXPECT_EQ(reader.Next(frame), Found::Nothing) << i;
    }
    reader.Append("c");
    EXPECT_THAT(TakeBodies(reader), ElementsAre("abc"));
}

TEST(PipeReader, TellsABadPreambleUntilItIsCleared)
{
    PipeReader reader;
    reader.Append("\x53\x50");
    PipeFrame frame;
    EXPECT_EQ(reader.Next(frame), Found::BadPreamble);
    EXPECT_EQ(reader.Preamble(), 0x5053);
    EXPECT_EQ(reader.Next(frame), Found::BadPreamble);
    reader.Clear();
    EXPECT_EQ(reader.Next(frame), Found::Nothing);
    reader.Append(EncodePipeFrame(PipeFrameType::frameChat, "again"));
    EXPECT_THAT(TakeBodies(reader), ElementsAre("again"));
}

TEST(PipeReader, TellsThePreambleAsASignedNumber)
{
    PipeReader reader;
    reader.Append("\xFF\xFF");
    EXPECT_EQ(reader.Preamble(), -1);
}

TEST(PipeReader, SeesABadPreambleBehindAGoodFrame)
{
    PipeReader reader;
    reader.Append(EncodePipeFrame(PipeFrameType::frameChat, "x") + "nonsense");
    EXPECT_THAT(TakeBodies(reader), ElementsAre("x"));
    PipeFrame frame;
    EXPECT_EQ(reader.Next(frame), Found::BadPreamble);
}

TEST(PipeReader, RefusesBadLengthsBeforeTheirBodyHasCome)
{
    for (const int length : {-1, -32768, 101, 32767}) {
        PipeReader reader(100);
        reader.Append(Header(PipeFrame::kPreamble, 33, length));
        PipeFrame frame;
        EXPECT_EQ(reader.Next(frame), Found::BadLength) << length;
        EXPECT_EQ(reader.Next(frame), Found::BadLength) << length;
    }
}

TEST(PipeReader, AcceptsTheGreatestLengthThatItWasMadeFor)
{
    PipeReader reader(100);
    reader.Append(EncodePipeFrame(PipeFrameType::frameChat, std::string(100, 'x')));
    EXPECT_THAT(TakeBodies(reader), ElementsAre(std::string(100, 'x')));
}

TEST(PipeReader, NeverHoldsMoreThanItsCapacity)
{
    PipeReader reader;
    const auto frame = EncodePipeFrame(PipeFrameType::frameChat, std::string(32767, 'x'));
    EXPECT_EQ(reader.Append(frame + frame + frame), PipeReader::kCapacity);
    EXPECT_EQ(reader.Room(), 0u);
    EXPECT_EQ(reader.Append("x"), 0u);
    EXPECT_EQ(TakeBodies(reader).size(), 2u);
    EXPECT_EQ(reader.Room(), PipeReader::kCapacity);
}

TEST(PipeReader, FindsRoomBehindFramesThatWereTaken)
{
    PipeReader reader;
    const auto bytes = EncodePipeFrame(PipeFrameType::frameChat, std::string(1000, 'x'));
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(reader.Append(bytes.substr(0, 500)), 500u);
        EXPECT_THAT(TakeBodies(reader), IsEmpty());
        ASSERT_EQ(reader.Append(bytes.substr(500)), bytes.size() - 500);
        EXPECT_EQ(TakeBodies(reader).size(), 1u);
    }
}

TEST(PipeReader, GivesFramesOfUnknownTypesToo)
{
    PipeReader reader;
    reader.Append(Header(PipeFrame::kPreamble, -7, 1) + "x");
    PipeFrame frame;
    ASSERT_EQ(reader.Next(frame), Found::Frame);
    EXPECT_EQ(int(frame.type), -7);
}

}  // namespace
}  // namespace fenrik
