#include "model/MemoryRoad.h"
#include "NodeDownloadFixture.h"

#include <random>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Sent = ScriptedNode::Sent;

void Put(ByteList& memory, int position, const std::string& text)
{
    std::copy(text.begin(), text.end(), memory.begin() + position - 1);
}

class MemoryRoadTest : public NodeDownloadTest {
protected:
    MemoryRoadTest()
    {
        Node().setTypeID(2);
        Node().setIProtocol(CNode::kProtocolImage);
        peer.memory.assign(NodeImage::kSize, 0);
        SetType(2);
    }
    std::uint8_t& At(int position) { return peer.memory[std::size_t(position - 1)]; }
    void SetType(int type) { At(NodeImage::kNodeType) = std::uint8_t(type); }
    void PutName(int position, const std::string& name)
    {
        Put(peer.memory, position, name + std::string(32, ' ').substr(name.size()));
    }
    QByteArray Image() const
    {
        return {reinterpret_cast<const char*>(peer.memory.data()), qsizetype(peer.memory.size())};
    }
};

TEST_F(MemoryRoadTest, FillsNodeAndPoints)
{
    At(4) = 7;
    PutName(0xC60, "Rear");
    PutName(0xC80, "Door");
    PutName(0xCA0, "");
    At(0x981) = 1;
    At(0x982) = 4;
    At(0x983) = 5;   // switch type of input 1
    At(0x984) = 34;  // its on-state
    At(0x985) = 1;
    At(0x981 + 7) = 4;  // no command
    At(0x81) = 1;       // output 1: by relationship
    At(0x82) = 9;
    At(0x83) = 2;
    At(0x84) = 5;
    At(0x85) = 6;
    Put(peer.memory, 0x89, "\xFE\x01\x02\xFD\x01\x02\x03\xFF\xFF\x77");
    Put(peer.memory, 0x2501, std::string("\x00\x03\xFF\x63", 4));
    PutName(0xD00, "Horn");
    At(0x101) = 3;  // output 2 is not driven, but has a name
    PutName(0xD20, "Spare");
    PutName(0xD40, "Unused");
    Read();

    EXPECT_EQ(nodes, 7);
    EXPECT_EQ(Node().Name(), QStringLiteral("Rear"));
    EXPECT_EQ(Input(1).InCommand(), 260);
    EXPECT_EQ(Input(1).SwitchType(), 5);
    EXPECT_EQ(Input(1).OnState(), 34);
    EXPECT_EQ(Input(1).ThreeWay(), 1);
    EXPECT_EQ(Input(1).Name(), QStringLiteral("Door"));
    EXPECT_EQ(Input(2).InCommand(), 0);
    EXPECT_EQ(Input(2).Name(), QStringLiteral("Input 2"));
    EXPECT_EQ(Output(1).UsageCode(), 1);
    EXPECT_TRUE(Output(1).Flashing());
    EXPECT_EQ(Output(1).Loadshed(), Fixed4::FromTenThousandths(121000));
    EXPECT_EQ(Output(1).PWMValue(), 2);  // 2.5, to the even number
    EXPECT_EQ(Output(1).Sequence(), 6);
    EXPECT_EQ(Output(1).DelayOff(), Fixed4::Whole(2));
    EXPECT_EQ(Output(1).DelayOn(), Fixed4());
    EXPECT_EQ(Output(1).RPN(), QByteArray("\xFE\x01\x02\xFD\x01\x02\x03\xFF\xFF"));
    EXPECT_EQ(Output(1).Name(), QStringLiteral("Horn"));
    EXPECT_EQ(Output(2).Name(), QStringLiteral("Spare"));
    EXPECT_EQ(Output(3).Name(), QStringLiteral("Output 3"));
    EXPECT_EQ(Output(3).Loadshed(), Fixed4());
    EXPECT_EQ(window.LastStatus(), kMemoryDone);
    EXPECT_THAT(window.statuses, Contains(QStringLiteral("Retrieving Name for Output 1 - Hor")));
    // The low bytes of a command of 1024 and more and of an absent delay are not worth an exchange.
    EXPECT_THAT(peer.Data(923), Not(Contains(0x981 + 7)));
    EXPECT_THAT(peer.Data(923), Not(Contains(0x2503)));
    ExpectEnded();
}

TEST_F(MemoryRoadTest, IsTakenForGoodAfterTheFirstQueryFailed)
{
    Node().setIProtocol(CNode::kProtocolUnknown);
    Read(false);
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolImage);
    EXPECT_EQ(window.LastStatus(), kMemoryDone);
    EXPECT_THAT(peer.Data(940), ElementsAre(1, 1, 1));
    peer.sent.clear();
    peer.answers[1].bytes = {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 2};
    Read(false);
    EXPECT_THAT(peer.Data(940), IsEmpty());
}

TEST_F(MemoryRoadTest, FailsWithTheFirstByteThatDoesNotCome)
{
    peer.memory.resize(0xC62);
    Read();
    ExpectFailure();
    EXPECT_THAT(peer.Data(923), Contains(0xC62).Times(2));
}

TEST_F(MemoryRoadTest, KeepsWhatItReadWhenTheUserBreaksItOff)
{
    PutName(0xC60, "Rear");
    window.onStep = [this] { window.cancelled = window.done >= 34; };
    Read();
    EXPECT_EQ(window.LastStatus(), kCancelled);
    EXPECT_EQ(Node().Name(), QStringLiteral("Rear"));
    ExpectEnded();
}

TEST_F(MemoryRoadTest, RefreshesTheVersionOfTheSelectedNode)
{
    peer.version = 0x0103;
    system.ActivateNode(2);
    system.SelectNode(2);
    Read(false);
    EXPECT_EQ(Node().osMinVersion(), 3);
}

TEST_F(MemoryRoadTest, StopsARelationshipAtTheEndOfItsBlock)
{
    At(0x81) = 1;
    for (int position = 0x89; position <= 0x100; ++position)
        At(position) = 7;
    Read(false);
    EXPECT_EQ(Output(1).RPN(), QByteArray(0x100 - 0x89, '\x07'));
}

// --- Node image files ----------------------------------------------------------------------------------------------

TEST_F(MemoryRoadTest, ReadsAFileWithoutAWordOnTheLine)
{
    PutName(0xC60, "Rear");
    Node().setIProtocol(CNode::kProtocolUnknown);
    system.ActivateNode(2);
    system.SelectNode(2);
    system.UnmountNode();
    ReadImage(Image());
    EXPECT_EQ(Node().Name(), QStringLiteral("Rear"));
    EXPECT_THAT(peer.sent, IsEmpty());
    EXPECT_FALSE(system.Dirty());
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolUnknown);
    EXPECT_THAT(window.calls, ElementsAre("pbProgressEnd"));
    EXPECT_EQ(window.LastStatus(), kMemoryDone);
    ExpectEnded();
}

TEST_F(MemoryRoadTest, AsksAMountedNodeNotEvenForItsVersionWhileItReadsAFile)
{
    peer.version = 0x0103;
    system.ActivateNode(2);
    system.SelectNode(2);
    ASSERT_EQ(system.MountedNodeNumber(), 2);
    ReadImage(Image());
    EXPECT_EQ(window.LastStatus(), kMemoryDone);
    EXPECT_THAT(peer.sent, IsEmpty());
    EXPECT_EQ(Node().osMinVersion(), 0);
}

TEST_F(MemoryRoadTest, RefusesAFileOfAnotherSizeOrNameInSilence)
{
    PutName(0xC60, "Rear");
    ReadImage(Image().chopped(1));
    ReadImage(Image() + 'x');
    for (const QString& name : {QStringLiteral("a.img"), QStringLiteral("a.txt")}) {
        MakeFile(folderOfImages.filePath(name), Image());
        Node().ReadNode(folderOfImages.filePath(name), nodes, true);
    }
    Node().ReadNode(folderOfImages.filePath(QStringLiteral("none.bin")), nodes, true);
    EXPECT_EQ(Node().Name(), QString());
    EXPECT_THAT(window.statuses, IsEmpty());
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(MemoryRoadTest, GivesInputsOfTheOldestNodesTheirOnStates)
{
    for (const int type : {0, 255}) {
        SetType(type);
        At(0xE01) = 1;
        ReadImage(Image());
        EXPECT_EQ(Input(1).OnState(), 18);
        EXPECT_EQ(Input(8).OnState(), 18);
        EXPECT_EQ(Input(9).OnState(), 242);
        EXPECT_EQ(Input(12).OnState(), 242);
        EXPECT_EQ(Input(13).OnState(), 241);
        EXPECT_EQ(Input(16).OnState(), 241);
    }
    SetType(9);
    ReadImage(Image());
    EXPECT_EQ(Input(1).OnState(), 1);
    EXPECT_EQ(Input(9).OnState(), 0);
}

TEST_F(MemoryRoadTest, TakesOnStatesAsTheyAreIfOneIsNew)
{
    SetType(0);
    At(0xE01 + 3 * 15) = 2;
    ReadImage(Image());
    EXPECT_EQ(Input(1).OnState(), 0);
    EXPECT_EQ(Input(16).OnState(), 2);
}

TEST_F(MemoryRoadTest, PassesOverAByteInTheRecordsOfTheFirstModels)
{
    SetType(9);
    At(0x83) = 1;
    At(0x84) = 8;
    At(0x85) = 5;
    ReadImage(Image());
    EXPECT_EQ(Output(1).Loadshed(), Fixed4::FromTenThousandths(97000));
    EXPECT_EQ(Output(1).PWMValue(), 5);
}

TEST_F(MemoryRoadTest, LeavesAModelWithoutTablesAsItIs)
{
    SetType(10);
    Node().setTypeID(10);
    Input(1).setName(QStringLiteral("Door"));
    Output(1).setUsageCode(1);
    ReadImage(Image());
    EXPECT_EQ(Input(1).Name(), QStringLiteral("Door"));
    EXPECT_EQ(Input(1).OnState(), 255);
    EXPECT_EQ(Output(1).RPN(), QByteArray("\xFF"));
    EXPECT_EQ(window.LastStatus(), kMemoryDone);
}

TEST_F(MemoryRoadTest, SurvivesAnErasedMemory)
{
    ReadImage(QByteArray(NodeImage::kSize, '\xFF'));
    EXPECT_EQ(Node().typeID(), 255);
    EXPECT_EQ(Node().number(), 2);
    EXPECT_EQ(Output(1).UsageCode(), 255);
    EXPECT_EQ(Output(1).Loadshed(), Fixed4());
    EXPECT_EQ(Output(1).DelayOn(), Fixed4());
    EXPECT_EQ(nodes, 255);
}

TEST_F(MemoryRoadTest, SurvivesAnyBytes)
{
    std::mt19937 random(20260314);
    for (int round = 0; round < 32; ++round) {
        QByteArray image(NodeImage::kSize, '\0');
        std::generate(image.begin(), image.end(), [&random] { return char(random()); });
        ReadImage(image);
        EXPECT_EQ(window.LastStatus(), kMemoryDone);
        for (int number = 1; number <= Node().COutputs().Count(); ++number)
            EXPECT_LT(Output(number).RPN().size(), NodeImage::kBlockLength);
    }
}

}  // namespace
}  // namespace fenrik
