#include "catalogue/Volumes.h"

#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;

TEST(Volumes, AreHomeTheFileSystemAndWhatWasPluggedIn)
{
    const auto volumes =
        Volumes("/home/ann", {"/", "/boot", "/proc", "/media/ann/STICK", "/mnt/share", "/run/media/x/y z"});
    QStringList names;
    for (const Volume& volume : volumes)
        names.append(volume.name + '=' + volume.root);
    EXPECT_THAT(names, ElementsAre("Home=/home/ann", "File System=/", "STICK=/media/ann/STICK", "share=/mnt/share",
                                   "y z=/run/media/x/y z"));
    EXPECT_EQ(VolumeOf(volumes, "/home/ann/work"), 0);
    EXPECT_EQ(VolumeOf(volumes, "/home/anne"), 1);
    EXPECT_EQ(VolumeOf(volumes, "/media/ann/STICK"), 2);
    EXPECT_EQ(VolumeOf({}, "/"), -1);
}

struct ShortRow {
    int room;
    const char* text;
};

class ShortFolders : public testing::TestWithParam<ShortRow> {};

TEST_P(ShortFolders, KeepTheirLastFolders)
{
    const int room = GetParam().room;
    EXPECT_EQ(ShortenedFolder("/home/ann/work", [room](const QString& text) { return text.size() <= room; }),
              GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Volumes, ShortFolders,
                         testing::Values(ShortRow{14, "/home/ann/work"}, ShortRow{13, " .../ann/work"},
                                         ShortRow{12, " .../work"}, ShortRow{3, " .../work"}));

}  // namespace
}  // namespace fenrik
