#include "remote/RDMain.h"

#include "ProfilesFixture.h"
#include "platform/SettingsStore.h"

namespace fenrik {
namespace {

class RDMainTest : public ProfilesTest {
protected:
    QString Saved(const char* key) const { return texts.GetSetting("Settings", QLatin1String(key), "none"); }

    SettingsStore texts{folder.path() + QStringLiteral("/settings.ini")};
    RDMain rd{settings, texts};
};

TEST_F(RDMainTest, StartsOffAndWithoutAProfile)
{
    rd.LoadRDSettings();
    EXPECT_FALSE(rd.RDEnable);
    EXPECT_EQ(rd.RDRecentProfileKey, "");
    EXPECT_EQ(rd.CurrentProfile(), nullptr);
    EXPECT_EQ(rd.ProfileIndex(), 0);
}

TEST_F(RDMainTest, TheChoiceIsThereInTheNextRun)
{
    rd.LoadRDSettings();
    rd.SaveProfiles({ann, bob});
    rd.RDEnable = true;
    rd.RDRecentProfileKey = bob.key();
    rd.SaveRDSettings();
    EXPECT_EQ(Saved("RDEnable"), "True");

    RDMain next(settings, texts);
    next.LoadRDSettings();
    EXPECT_TRUE(next.RDEnable);
    ASSERT_NE(next.CurrentProfile(), nullptr);
    EXPECT_EQ(*next.CurrentProfile(), bob);
    EXPECT_TRUE(next.ProfileExists("{ANN}"));
}

TEST_F(RDMainTest, CountsTheProfileInUseFromOne)
{
    rd.SaveProfiles({ann, bob});
    rd.RDRecentProfileKey = "{BOB}";
    EXPECT_EQ(rd.ProfileIndex(), 2);
    rd.RDRecentProfileKey = "{GONE}";
    EXPECT_EQ(rd.ProfileIndex(), 0);
    EXPECT_FALSE(rd.ProfileExists("{GONE}"));
}

TEST_F(RDMainTest, AStorageOutOfOrderReadsAndSavesNothing)
{
    texts.SaveSetting("Settings", "RDEnable", "True");
    texts.SaveSetting("Settings", "RDRecentProfileKey", "{ANN}");
    RegistryStore unusable(UnusablePath());
    MRegistry broken(unusable, errors);
    PipeSettings none(broken, boxes, clock);
    RDMain without(none, texts);

    without.LoadRDSettings();
    EXPECT_FALSE(without.RDEnable);
    EXPECT_EQ(without.RDRecentProfileKey, "");
    EXPECT_FALSE(without.StorageWorks());

    without.RDEnable = true;
    without.RDRecentProfileKey = "{ANN}";
    without.SaveRDSettings();
    EXPECT_EQ(Saved("RDEnable"), "False");
    EXPECT_EQ(Saved("RDRecentProfileKey"), "");
}

}  // namespace
}  // namespace fenrik
