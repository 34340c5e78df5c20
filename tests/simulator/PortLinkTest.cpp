#include "simulator/PortLink.h"

#include <QTemporaryDir>

#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

namespace fs = std::filesystem;

namespace fenrik {
namespace {

class PortLinkTest : public testing::Test {
protected:
    QTemporaryDir folder;
    fs::path root = folder.path().toStdString();
    fs::path link = root / "made" / "ports" / "com5";
};

TEST_F(PortLinkTest, IsMadeWithItsFoldersAndRemovedAtTheEnd)
{
    {
        const PortLink made(link, "/dev/pts/77");
        EXPECT_EQ(fs::read_symlink(link), "/dev/pts/77");
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(PortLinkTest, ReplacesALinkWhoseTargetIsGone)
{
    fs::create_directories(link.parent_path());
    fs::create_symlink(root / "gone", link);
    const PortLink made(link, "/dev/pts/77");
    EXPECT_EQ(fs::read_symlink(link), "/dev/pts/77");
}

TEST_F(PortLinkTest, ReplacesALinkToATerminalWhoseNumberIsInUseAgain)
{
    fs::create_directories(link.parent_path());
    fs::create_symlink("/dev/pts/ptmx", link);
    const PortLink made(link, "/dev/pts/77");
    EXPECT_EQ(fs::read_symlink(link), "/dev/pts/77");
}

TEST_F(PortLinkTest, KeepsALinkToARealDevice)
{
    fs::create_directories(link.parent_path());
    fs::create_symlink("/dev/null", link);
    EXPECT_THROW(PortLink(link, "/dev/pts/77"), std::runtime_error);
    EXPECT_EQ(fs::read_symlink(link), "/dev/null");
}

TEST_F(PortLinkTest, KeepsAFile)
{
    fs::create_directories(link.parent_path());
    std::ofstream(link) << "mine";
    EXPECT_THROW(PortLink(link, "/dev/pts/77"), std::runtime_error);
    EXPECT_TRUE(fs::is_regular_file(link));
}

TEST_F(PortLinkTest, LeavesALinkThatAnotherTookOver)
{
    std::optional<PortLink> first(std::in_place, link, "/dev/pts/77");
    const PortLink second(link, "/dev/pts/78");
    first.reset();
    EXPECT_EQ(fs::read_symlink(link), "/dev/pts/78");
}

}  // namespace
}  // namespace fenrik
