#include "remote/PipeSettings.h"

#include "ProfilesFixture.h"
#include "platform/VersionInfo.h"

#include <QRegularExpression>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

TEST_F(ProfilesTest, AnEmptyRegistryHasNoProfilesAndGetsTheirPlace)
{
    EXPECT_THAT(settings.LoadProfiles(), IsEmpty());
    EXPECT_TRUE(store.KeyExists(Path()));
    EXPECT_TRUE(settings.StorageWorks());
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(ProfilesTest, WhatWasSavedIsLoaded)
{
    static_cast<void>(settings.SaveProfiles({ann, bob}));
    EXPECT_THAT(settings.LoadProfiles(), UnorderedElementsAre(ann, bob));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(ProfilesTest, AProfileIsAKeyOfTextsAndANumberThatTellsWhoWroteIt)
{
    static_cast<void>(settings.SaveProfiles({ann}));
    const QString key = "Software\\Harnwick Technologies\\RemoteServer\\Profiles\\{ANN}";
    EXPECT_EQ(store.ReadValue(key, "").toString(),
              "App: Fenrik Diagnostics " + VersionInfo::OfThisBuild().MajorMinorRevision());
    EXPECT_EQ(store.ReadValue(key, "UserName").toString(), "Ann");
    EXPECT_EQ(store.ReadValue(key, "LogonID").toString(), "ann-id");
    EXPECT_EQ(store.ReadValue(key, "ServerName").toString(), "relay.example");
    EXPECT_EQ(store.ReadValue(key, "ServerPort"), QVariant(48051));
    EXPECT_EQ(store.ReadValue(key, "ServerPort").typeId(), int(QMetaType::Int));
}

TEST_F(ProfilesTest, SavingDeletesTheProfilesThatAreGone)
{
    static_cast<void>(settings.SaveProfiles({ann, bob}));
    static_cast<void>(settings.SaveProfiles({bob}));
    EXPECT_THAT(store.SubKeys(Path()), ElementsAre("{BOB}"));
}

TEST_F(ProfilesTest, SavingKeepsTheOrderOfTheListAndGivesIdentities)
{
    CPipeProfile fresh = ann;
    fresh.UniqueID.clear();
    const CPipeProfiles saved = settings.SaveProfiles({fresh, bob});
    ASSERT_THAT(saved, SizeIs(2));
    EXPECT_EQ(saved[0].UniqueID, "{ID-1}");
    EXPECT_EQ(saved[1], bob);
    EXPECT_TRUE(store.KeyExists(Path("{ID-1}")));
}

TEST_F(ProfilesTest, APortThatWasWrittenAsATextIsItsLeadingNumber)
{
    store.WriteValue(Path("{X}"), "ServerPort", QStringLiteral("4711 or so"));
    store.WriteValue(Path("{Y}"), "ServerPort", QStringLiteral("99999999999"));
    const CPipeProfiles profiles = settings.LoadProfiles();
    ASSERT_THAT(profiles, SizeIs(2));
    EXPECT_EQ(profiles[0].ServerPort, 4711);
    EXPECT_EQ(profiles[1].ServerPort, 0);
    EXPECT_EQ(profiles[0].UserName, "");
}

TEST_F(ProfilesTest, OnlyTheFirstOfTwoEqualKeysIsLoaded)
{
    store.CreateKey(Path("12"));
    store.CreateKey(Path("12ID"));
    EXPECT_THAT(settings.LoadProfiles(), SizeIs(1));
}

TEST_F(ProfilesTest, AStorageThatCantBeMadeIsToldAndOutOfOrderFromThen)
{
    RegistryStore unusable(UnusablePath());
    MRegistry broken(unusable, errors);
    PipeSettings none(broken, boxes, clock);
    EXPECT_THAT(none.LoadProfiles(), IsEmpty());
    EXPECT_FALSE(none.StorageWorks());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(boxes.boxes[0].text,
              "There is a problem with your list of saved Profiles.  Because of this, you will be unable to use Remote "
              "Diagnostics.\n\nTo repair your Profiles list, uninstall Fenrik Diagnostics, and then reinstall the "
              "latest version.  If this does not work, contact Harnwick Technologies.");
}

TEST_F(ProfilesTest, AMissingPathIsOnlyToldIfThatIsWanted)
{
    RegistryStore unusable(UnusablePath());
    MRegistry broken(unusable, errors);
    PipeSettings none(broken, boxes, clock);
    EXPECT_FALSE(none.EnsureRegistryPath("One\\Two", false));
    EXPECT_TRUE(none.StorageWorks());
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(ProfilesTest, AFailedReadOrWriteIsReportedByItsPlaceAndNumber)
{
    RegistryStore unusable(UnusablePath());
    MRegistry broken(unusable, errors);
    EXPECT_FALSE(broken.WriteRegKeyValue("Key", "Name", 1));
    EXPECT_FALSE(broken.ReadRegKeyValue("Key", "Name").isValid());
    EXPECT_FALSE(broken.GetRegSubKeys("Key"));
    ASSERT_THAT(errors.reports, SizeIs(3));
    EXPECT_EQ(errors.reports[0].where, "WriteRegKeyValue()");
    EXPECT_EQ(errors.reports[0].description, "Error #75");
    EXPECT_EQ(errors.reports[1].where, "ReadRegKeyValue()");
    EXPECT_EQ(errors.reports[2].where, "GetRegSubKeys()");
}

TEST_F(ProfilesTest, AnIdentityIsAGuidInBraces)
{
    const QRegularExpression guid("^\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}$");
    EXPECT_TRUE(guid.match(PipeSettings::NewGuid()).hasMatch());
    EXPECT_NE(PipeSettings::NewGuid(), PipeSettings::NewGuid());
}

TEST_F(ProfilesTest, AnIdentityOnceGivenStays)
{
    CPipeProfile profile = ann;
    settings.EnsureUniqueID(profile);
    EXPECT_EQ(profile.UniqueID, "{ANN}");
}

// The clock stands on the 73rd day of 2026, at 9:05:07.
TEST_F(ProfilesTest, WithoutGuidsTheIdentityIsTheTimeAndARandomNumber)
{
    const PipeSettings withoutGuids(registry, boxes, clock, [] { return QString(); });
    CPipeProfile profile;
    withoutGuids.EnsureUniqueID(profile);
    EXPECT_TRUE(QRegularExpression("^202673090507\\d{4}$").match(profile.UniqueID).hasMatch())
        << profile.UniqueID.toStdString();
    EXPECT_EQ(profile.key(), profile.UniqueID + "ID");
}

TEST(CPipeProfile, ANumericIdentityIsKeyedWithTwoLettersBehindIt)
{
    EXPECT_EQ((CPipeProfile{"", "", "", 1, "2026730905070001"}).key(), "2026730905070001ID");
    EXPECT_EQ((CPipeProfile{"", "", "", 1, "{4711}"}).key(), "{4711}");
    EXPECT_EQ((CPipeProfile{"", "", "", 1, "nan"}).key(), "nan");
    EXPECT_EQ((CPipeProfile{}).key(), "");
}

TEST(CPipeProfile, IsFoundByItsKey)
{
    const CPipeProfiles profiles{{"", "", "", 1, "12"}, {"", "", "", 2, "{B}"}};
    EXPECT_EQ(FindProfile(profiles, "{B}"), &profiles[1]);
    EXPECT_EQ(FindProfile(profiles, "12ID"), &profiles[0]);
    EXPECT_EQ(FindProfile(profiles, "12"), nullptr);
}

struct Faulty {
    const char* name;
    CPipeProfile profile;
    int faults;
};

class ProfileFaults : public testing::TestWithParam<Faulty> {};

TEST_P(ProfileFaults, HaveABitForEachField)
{
    EXPECT_EQ(FaultsOf(GetParam().profile), GetParam().faults);
}

INSTANTIATE_TEST_SUITE_P(
    Profiles, ProfileFaults,
    testing::Values(Faulty{"None", {"A", "a", "s", 1, ""}, 0}, Faulty{"HighestPort", {"A", "a", "s", 65535, ""}, 0},
                    Faulty{"Name", {"", "a", "s", 1, ""}, 1}, Faulty{"BlankName", {"  ", "a", "s", 1, ""}, 1},
                    Faulty{"LogonID", {"A", "", "s", 1, ""}, 2}, Faulty{"ServerName", {"A", "a", "", 1, ""}, 4},
                    Faulty{"PortZero", {"A", "a", "s", 0, ""}, 8}, Faulty{"PortTooHigh", {"A", "a", "s", 65536, ""}, 8},
                    Faulty{"NegativePort", {"A", "a", "s", -1, ""}, 8}, Faulty{"All", {}, 15}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
