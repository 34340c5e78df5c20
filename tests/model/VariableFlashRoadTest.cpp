#include "model/VariableFlashRoad.h"
#include "NodeDownloadFixture.h"

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using Sent = ScriptedNode::Sent;

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
