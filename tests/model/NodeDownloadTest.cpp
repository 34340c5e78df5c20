#include "model/NodeDownload.h"
#include "ScriptedNode.h"
#include "support/DatabaseFile.h"

#include <QTemporaryDir>

#include <random>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Sent = ScriptedNode::Sent;

const QString kCancelled = QStringLiteral("Data download cancelled due to user request.");
const QString kFailed = QStringLiteral("Data download cancelled due to communication error.");
const QString kQueriesDone = QStringLiteral("Node information successfully updated.");
const QString kMemoryDone = QStringLiteral("Node information succesfully updated.");

class NodeDownloadTest : public ScriptedNodeTest {
protected:
    void Read(bool names = true) { Node().ReadNode(QString(), nodes, names); }

    void ReadImage(const QByteArray& image)
    {
        const QString path = folderOfImages.filePath(QStringLiteral("Bus_Node 2.bin"));
        MakeFile(path, image);
        Node().ReadNode(path, nodes, true);
    }

    void ExpectFailure()
    {
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_EQ(boxes.boxes[0].title, QStringLiteral("Update Node Information"));
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        EXPECT_EQ(boxes.boxes[0].text,
                  QStringLiteral("Diagnostics is having trouble communicating with the node.  Please check that your "
                                 "connection with the Transceiver is still good, and that the node is on and running "
                                 "normally."));
        EXPECT_EQ(window.LastStatus(), kFailed);
        ExpectEnded();
    }

    void ExpectEnded()
    {
        EXPECT_THAT(window.calls, Contains("pbProgressEnd"));
        EXPECT_EQ(window.cursors, 0);
        EXPECT_THAT(errors.reports, IsEmpty());
    }

    QTemporaryDir folderOfImages;
    std::uint8_t nodes = 0;
};

// --- Query road ----------------------------------------------------------------------------------------------------

class QueryRoadTest : public NodeDownloadTest {
protected:
    QueryRoadTest()
    {
        Node().setTypeID(2);
        Answer(0x0001, {0x10, 0, 0xFF, 0xFF, 2, 0, 2});
        Answer(0x0A10, {' ', 'F', 'r', 'o', 'n', 't', ' '});
        for (int i = 0; i < 4; ++i)
            Answer(0x0200 + i, {0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0, std::uint8_t(40 + i), 0, 0, 0, 0, 0, 0});
        for (int i = 0; i < 12; ++i)
            Answer(0x0300 + i, {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 50, 120, 2, 0, 3, 0, 0xFF, 0xFF});
    }
    void Answer(int data, const ByteList& bytes) { peer.answers[data].bytes = bytes; }
};

TEST_F(QueryRoadTest, FillsNodeAndPoints)
{
    Answer(0x0300, {0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x2C, 0x01, 50, 120, 2, 0, 3, 0, 1, 0});
    Answer(0x0B2C, {' ', 254, 0, 40});
    Answer(0x0A20, {'H', 'o', 'r', 'n'});
    Answer(0x0201, {0x30, 0, 0xFF, 0xFF, 0, 1, 0, 41, 0, 0, 0, 0, 0, 0});
    Answer(0x0A30, {' ', ' ', ' '});
    Read();
    EXPECT_EQ(Node().Name(), QStringLiteral("Front"));
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    EXPECT_EQ(Input(1).InCommand(), 40);
    EXPECT_EQ(Input(2).Name(), QStringLiteral("Input 2"));
    EXPECT_EQ(Output(1).Name(), QStringLiteral("Horn"));
    EXPECT_EQ(Output(1).UsageCode(), 1);
    EXPECT_EQ(Output(1).RPN(), QByteArray("\xFE\x00\x28\xFF", 4));
    EXPECT_EQ(Output(1).Loadshed(), Fixed4::Whole(12));
    EXPECT_EQ(Output(1).DelayOff(), Fixed4::FromTenThousandths(15000));
    EXPECT_EQ(Output(2).UsageCode(), 0);
    EXPECT_EQ(Output(2).Name(), QStringLiteral("Output 2"));
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
    EXPECT_THAT(window.statuses, Contains(QStringLiteral("Retrieving Name for Output 1 - Horn")));
    EXPECT_EQ(window.total, 4 * 5 + 32 + 12 * 30 + 16 * 32);
    EXPECT_EQ(window.done, window.total);
    EXPECT_TRUE(system.Dirty());
    EXPECT_THAT(window.calls, ElementsAre("pbProgressEnd"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    ExpectEnded();
}

TEST_F(QueryRoadTest, LeavesTheNamesOfPointsAloneUnlessAskedForThem)
{
    Read(false);
    EXPECT_EQ(window.total, 4 * 5 + 32 + 12 * 30);
    EXPECT_EQ(window.done, window.total);
}

TEST_F(QueryRoadTest, NamesANodeWithoutNameByItsNumber)
{
    Answer(0x0001, {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 2});
    Read(false);
    EXPECT_EQ(Node().Name(), QStringLiteral("Node 2"));
}

TEST_F(QueryRoadTest, IsKeptByANodeThatWasReadByItOnce)
{
    Node().setIProtocol(CNode::kProtocolQueries);
    peer.silent = true;
    Read(false);
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    EXPECT_THAT(peer.Data(923), IsEmpty());
    ExpectFailure();
}

TEST_F(QueryRoadTest, TakesARefusalForNoError)
{
    peer.answers[0x0203].granted = false;
    Read(false);
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
    EXPECT_EQ(Input(4).InCommand(), 0);
}

TEST_F(QueryRoadTest, FailsAtItsEndIfAnAnswerWasLost)
{
    peer.answers.erase(0x0301);
    Read(false);
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    ExpectFailure();
}

TEST_F(QueryRoadTest, KeepsWhatItReadWhenTheUserBreaksItOff)
{
    window.onStep = [this] { window.cancelled = window.done >= 32 + 2 * 5; };
    Read();
    EXPECT_EQ(window.LastStatus(), kCancelled);
    EXPECT_EQ(Input(2).InCommand(), 41);
    EXPECT_EQ(Input(3).InCommand(), 0);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_TRUE(system.Dirty());
    ExpectEnded();
}

TEST_F(QueryRoadTest, ForgetsAnEarlierCancel)
{
    window.cancelled = true;
    Read(false);
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
}

TEST_F(QueryRoadTest, MountsTheNodeForItsTimeIfItMust)
{
    system.UnmountNode();
    Read(false);
    EXPECT_THAT(window.calls, ElementsAre("MountNode 2", "UnmountNode 2", "pbProgressEnd"));
}

TEST_F(QueryRoadTest, AsksNothingOfANodeThatCannotBeMounted)
{
    system.UnmountNode();
    window.mounts = false;
    Read(false);
    EXPECT_EQ(window.LastStatus(), QStringLiteral("Unable to Mount Selected Node."));
    EXPECT_THAT(peer.sent, IsEmpty());
    EXPECT_FALSE(system.Dirty());
}

// The port goes away after each of the first frames in turn; the download ends soon and names stay what they were.
TEST_F(QueryRoadTest, EndsWhenThePortGoesAwayAtAnyFrame)
{
    for (std::size_t last = 1; last < 45; ++last) {
        window.statuses.clear();
        boxes.boxes.clear();
        peer.sent.clear();
        host.open = true;
        Input(1).setName(QStringLiteral("Door"));
        Node().setIProtocol(CNode::kProtocolQueries);
        peer.onFrame = [this, last](const Sent&) {
            // No answer any more: it would still be under way in the next round.
            peer.silent = peer.sent.size() >= last;
            if (peer.sent.size() == last)
                pump.After(0.005, [this] { host.open = false; });
        };
        Read();
        if (peer.sent.size() < last)
            break;  // the download has fewer frames
        EXPECT_EQ(window.LastStatus(), kFailed) << last;
        EXPECT_EQ(peer.sent.size(), last);
        EXPECT_EQ(Input(1).Name(), QStringLiteral("Door"));
        EXPECT_EQ(window.cursors, 0);
    }
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(QueryRoadTest, ShowsNothingMoreWhenTheProgramEnds)
{
    peer.onFrame = [this](const Sent& frame) {
        if (frame.data == 0x0202)
            pump.Stop();
    };
    Read();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(window.statuses, Not(Contains(kFailed)));
    EXPECT_EQ(peer.sent.back().data, 0x0202);
    ExpectEnded();
}

// --- Memory road ---------------------------------------------------------------------------------------------------

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
    for (const QString& name : {QStringLiteral("a.dav"), QStringLiteral("a.txt")}) {
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

// --- Variable flash ------------------------------------------------------------------------------------------------

class VariableFlashRoadTest : public NodeDownloadTest {
protected:
    VariableFlashRoadTest()
    {
        Node().setTypeID(6);
        BuildFlash();
    }

    static ByteList Entry(const ByteList& content, bool subEntries = false)
    {
        const std::size_t size = content.size() + 2;
        ByteList entry{std::uint8_t(size >> 8 | (subEntries ? 0x40 : 0)), std::uint8_t(size)};
        entry.insert(entry.end(), content.begin(), content.end());
        return entry;
    }

    static void Append(ByteList& list, const ByteList& more) { list.insert(list.end(), more.begin(), more.end()); }

    void BuildFlash()
    {
        ByteList first(10, 0);
        Append(first, {0, 40, 0x04, 0xFF, 0x05, 0x00});  // commands 40, 1279 and 1280
        ByteList relationships;
        Append(relationships, Entry({254, 0, 40, 255, 99}));
        for (int output = 2; output <= 8; ++output)
            Append(relationships, Entry({254, 0, std::uint8_t(output)}));
        ByteList loads{0x00, 0x0C, 11, 10, 9, 8, 7, 6};
        ByteList body = Entry(first);
        Append(body, Entry(relationships, true));
        for (int i = 0; i < 3; ++i)
            Append(body, Entry({}));
        Append(body, Entry(loads, true));
        peer.flash = Entry(body, true);
    }
};

TEST_F(VariableFlashRoadTest, FillsTheComfortModule)
{
    commands[40].Name = QStringLiteral("Fan switch");
    Output(1).setPermOn(true);
    Read();
    EXPECT_EQ(Input(1).InCommand(), 40);
    EXPECT_EQ(Input(1).Name(), QStringLiteral("Fan switch"));
    EXPECT_EQ(Input(1).OnState(), 17);
    EXPECT_EQ(Input(1).SwitchType(), 3);
    EXPECT_EQ(Input(1).ThreeWay(), 0);
    EXPECT_EQ(Input(2).OnState(), 17);
    EXPECT_EQ(Input(3).InCommand(), 1280);
    EXPECT_EQ(Input(3).Name(), QStringLiteral("Input 3"));
    EXPECT_EQ(Input(3).OnState(), 255);
    EXPECT_EQ(Output(1).Name(), QStringLiteral("Front Fan"));
    EXPECT_EQ(Output(8).Name(), QStringLiteral("Water Pump"));
    EXPECT_EQ(Output(2).Loadshed(), Fixed4::Whole(12));
    EXPECT_EQ(Output(2).UsageCode(), 1);
    EXPECT_FALSE(Output(1).PermOn());
    EXPECT_EQ(Output(1).RPN(), QByteArray("\xFE\x00\x28\xFF", 4));
    EXPECT_EQ(Output(8).RPN(), QByteArray("\xFE\x00\x08\xFF", 4));
    EXPECT_EQ(window.total, 100);
    EXPECT_EQ(window.LastStatus(), QStringLiteral("Progress - Loading Node 2"));
    EXPECT_TRUE(Node().VFlashSupport());
    EXPECT_TRUE(system.Dirty());
    EXPECT_THAT(peer.Data(923), IsEmpty());
    ExpectEnded();
}

TEST_F(VariableFlashRoadTest, EndsTheCallIfThereIsNoStructure)
{
    peer.flash.clear();
    system.UnmountNode();
    Read();
    EXPECT_FALSE(Node().VFlashSupport());
    EXPECT_THAT(peer.Data(940), ElementsAre(0, 0, 0));
    EXPECT_THAT(window.calls, ElementsAre("MountNode 2", "UnmountNode 2", "pbProgressEnd"));
    EXPECT_TRUE(system.Dirty());
    EXPECT_THAT(boxes.boxes, IsEmpty());

    peer.answers[1].bytes = {0xFF, 0xFF, 0xFF, 0xFF, 6, 0, 2};
    Read(false);
    EXPECT_THAT(peer.Data(940), Contains(0x0200));
}

TEST_F(VariableFlashRoadTest, AsksAQuestionWithoutMeaningWhenTheStructureIsBroken)
{
    for (const ByteList& broken : {ByteList{0x40, 2, 0, 0}, ByteList{0, 200}, ByteList(64, 0xFF), ByteList{0, 0}}) {
        boxes.boxes.clear();
        peer.flash = broken;
        Read();
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_EQ(boxes.boxes[0].text, QStringLiteral("An unexpected error has occurred while trying to download the "
                                                      "\n node programming."));
        EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        ExpectEnded();
    }
}

TEST_F(VariableFlashRoadTest, EndsWhenTheUserOrThePortSaysSo)
{
    window.onStep = [this] { window.cancelled = window.done > 10; };
    Read();
    EXPECT_EQ(window.LastStatus(), kCancelled);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    window.onStep = nullptr;
    peer.sent.clear();
    peer.onFrame = [this](const Sent&) { host.open = peer.sent.size() < 20; };
    Read();
    EXPECT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(peer.sent.size(), 20u);
}

TEST_F(NodeDownloadTest, ANodeWithoutALinkAsksNobody)
{
    system.setLink(nullptr);
    Read();
    EXPECT_THAT(peer.sent, IsEmpty());
    EXPECT_FALSE(system.Dirty());
}

}  // namespace
}  // namespace fenrik
