#include "OwnerRecorder.h"
#include "model/CSystem.h"
#include "model/NodeImage.h"
#include "shared/Settings.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;

/// Systems of eight nodes unless their images say otherwise.
class LoadSystemTest : public testing::Test {
protected:
    LoadSystemTest() { settings.NodesInSystem = 8; }

    QString File(const QString& name) const { return folder.filePath(name); }

    void MakeImage(const QString& name, int number, int nodeCount, qint64 size = NodeImage::kSize)
    {
        QByteArray image(size, '\0');
        image[2] = char(number);
        image[3] = char(nodeCount);
        MakeFile(File(name), image);
    }

    void Load() { system.LoadSystem(QStringLiteral("Bus"), folder.path(), true); }

    /// The nodes' numbers by position.
    std::vector<int> Numbers() const
    {
        std::vector<int> numbers;
        for (int position = 1; position <= system.NodesInSystem(); ++position)
            numbers.push_back(system.Nodes()[position].number());
        return numbers;
    }

    QTemporaryDir folder;
    Settings settings;
    OwnerRecorder owner;
    CSystem system{settings, QStringLiteral("/program"), &owner};
};

struct NoSystem {
    const char* name;
    const char* systemName;
    const char* path;
};

class NoSystems : public LoadSystemTest, public testing::WithParamInterface<NoSystem> {};

TEST_P(NoSystems, GiveTheNodesOfTheSettings)
{
    system.LoadSystem(QLatin1String(GetParam().systemName), QLatin1String(GetParam().path), false);
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_FALSE(system.Defined());
    EXPECT_EQ(system.Name(), QStringLiteral("Unspecified System"));
    EXPECT_THAT(owner.calls, ElementsAre("RefreshUINodeBarNodes", "AdjustFormCaption"));
}

INSTANTIATE_TEST_SUITE_P(LoadSystem, NoSystems,
                         testing::Values(NoSystem{"NoName", "", "/systems"}, NoSystem{"NoPath", "Bus", ""},
                                         NoSystem{"Neither", "", ""}),
                         [](const auto& row) { return row.param.name; });

TEST_F(LoadSystemTest, TakesNumbersAndCountFromTheImages)
{
    MakeImage(QStringLiteral("Bus_Node 1.bin"), 1, 3);
    MakeImage(QStringLiteral("Bus_Node 2.bin"), 2, 4);
    Load();
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 3, 4));
    EXPECT_TRUE(system.Defined());
    EXPECT_EQ(system.Name(), QStringLiteral("Bus"));
    EXPECT_EQ(system.path(), folder.path() + QDir::separator());
    EXPECT_EQ(system.Database(), QStringLiteral("/program/ncCommand.dav"));
    EXPECT_THAT(owner.calls, ElementsAre("RefreshUINodeBarNodes", "AdjustFormCaption"));
}

TEST_F(LoadSystemTest, AcceptsAFolderWithASeparatorAtItsEnd)
{
    system.LoadSystem(QStringLiteral("Bus"), folder.path() + QDir::separator(), true);
    EXPECT_EQ(system.path(), folder.path() + QDir::separator());
}

TEST_F(LoadSystemTest, UsesTheSettingsCountWithoutImages)
{
    Load();
    EXPECT_EQ(system.NodesInSystem(), 8);
    EXPECT_TRUE(system.Defined());
}

TEST_F(LoadSystemTest, UsesTheSystemsOwnDatabaseIfThereIsOne)
{
    MakeFile(File(QStringLiteral("Bus.dav")), "x");
    Load();
    EXPECT_EQ(system.Database(), File(QStringLiteral("Bus.dav")));
}

TEST_F(LoadSystemTest, FindsADatabaseOfAnOldDiskWithItsExtensionInCapitals)
{
    MakeFile(File(QStringLiteral("Bus.DAV")), "x");
    Load();
    EXPECT_EQ(system.Database(), File(QStringLiteral("Bus.DAV")));
    MakeFile(File(QStringLiteral("Bus.dav")), "x");
    Load();
    EXPECT_EQ(system.Database(), File(QStringLiteral("Bus.dav")));
}

TEST_F(LoadSystemTest, LeavesOutFilesThatAreNoImages)
{
    MakeImage(QStringLiteral("Bus_Node 1.bin"), 1, 2);
    MakeImage(QStringLiteral("Bus_short.bin"), 2, 9, NodeImage::kSize - 1);
    MakeImage(QStringLiteral("Bus_long.bin"), 2, 9, NodeImage::kSize + 1);
    MakeImage(QStringLiteral("Bus_Node 2.txt"), 2, 9);
    MakeImage(QStringLiteral("Car_Node 2.bin"), 2, 9);
    MakeImage(QStringLiteral("Bus_zero.bin"), 0, 9);
    Load();
    EXPECT_THAT(Numbers(), ElementsAre(1, 2));
}

// An image whose number is beyond the list is appended, wherever it belongs: a folder that lacks node 1's image puts
// node 5 first. Its key is then taken when position 5 is filled, and that node is missing.
TEST_F(LoadSystemTest, PutsTheFirstImageAtPositionOneWhateverItsNumber)
{
    MakeImage(QStringLiteral("Bus_Node 5.bin"), 5, 6);
    Load();
    EXPECT_THAT(Numbers(), ElementsAre(5, 2, 3, 4, 6));
}

TEST_F(LoadSystemTest, LetsALaterImageTakeThePositionOfAnEarlierOne)
{
    MakeImage(QStringLiteral("Bus_a.bin"), 5, 3);
    MakeImage(QStringLiteral("Bus_b.bin"), 1, 3);
    Load();
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 3));
}

TEST_F(LoadSystemTest, TakesTheImagesOfALargeSystemInTheOrderOfTheirNumbers)
{
    for (int number = 1; number <= 12; ++number)
        MakeImage(QStringLiteral("Bus_Node %1.bin").arg(number), number, 12);
    Load();
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(LoadSystemTest, MakesItsNodesMarkTheSystem)
{
    MakeImage(QStringLiteral("Bus_Node 1.bin"), 1, 2);
    Load();
    EXPECT_FALSE(system.Dirty());
    system.Node(1)->setName(QStringLiteral("Pump"));
    EXPECT_TRUE(system.Dirty());
}

TEST_F(LoadSystemTest, ReadsWholeImagesUnlessItIsInAHurry)
{
    MakeImage(QStringLiteral("Bus_Node 1.bin"), 1, 3);
    QByteArray image(NodeImage::kSize, ' ');
    image[2] = 2;
    image[3] = 4;
    image[14] = 2;
    image.replace(0x0D00 - 1, 4, "Horn");
    image.replace(0x0C60 - 1, 4, "Rear");
    MakeFile(File(QStringLiteral("Bus_Node 2.bin")), image);
    system.LoadSystem(QStringLiteral("Bus"), folder.path(), false);
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(system.Node(1)->TypeName(), QStringLiteral("Brontes"));
    EXPECT_EQ(system.Node(2)->typeID(), 2);
    EXPECT_EQ(system.Node(2)->Name(), QStringLiteral("Rear"));
    EXPECT_EQ(system.Node(2)->COutputs()[1].Name(), QStringLiteral("Horn"));
    EXPECT_EQ(system.Node(2)->COutputs()[1].Parent(), system.Node(2));
    EXPECT_FALSE(system.Dirty());

    Load();
    EXPECT_EQ(system.Node(2)->typeID(), 254);
}

TEST_F(LoadSystemTest, StartsFromNothingEachTime)
{
    Load();
    system.ActivateNode(1);
    system.setDirty();
    Load();
    EXPECT_EQ(system.ActiveNodeCount(), 0);
    EXPECT_FALSE(system.Dirty());
}

}  // namespace
}  // namespace fenrik
