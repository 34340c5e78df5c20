#include "platform/VersionInfo.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(VersionInfo, TheReleaseIsAlwaysThree)
{
    EXPECT_EQ(VersionInfo(1, 0, 1, {}).GetVersionRelease(), QStringLiteral("1.0.3"));
    EXPECT_EQ(VersionInfo(12, 34, 567, {}).GetVersionRelease(), QStringLiteral("12.34.3"));
}

TEST(VersionInfo, TellsMajorMinorAndRevision)
{
    EXPECT_EQ(VersionInfo(1, 2, 345, {}).MajorMinorRevision(), QStringLiteral("1.2.345"));
}

struct BuildRow {
    int revision;
    const char* build;
};

class BuildNumbers : public testing::TestWithParam<BuildRow> {};

TEST_P(BuildNumbers, AreTheRevisionModuloAHundredInThreeDigits)
{
    EXPECT_EQ(VersionInfo(1, 0, GetParam().revision, {}).Build(), QString::fromLatin1(GetParam().build));
}

INSTANTIATE_TEST_SUITE_P(VersionInfo, BuildNumbers,
                         testing::Values(BuildRow{0, "000"}, BuildRow{7, "007"}, BuildRow{99, "099"},
                                         BuildRow{100, "000"}, BuildRow{1234, "034"}));

struct FlavourRow {
    const char* comments;
    bool beta;
    bool test;
    bool debug;
};

class Flavours : public testing::TestWithParam<FlavourRow> {};

TEST_P(Flavours, AreWordsOfTheComments)
{
    const FlavourRow& row = GetParam();
    const VersionInfo version(1, 0, 1, QString::fromLatin1(row.comments));
    EXPECT_EQ(version.IsBeta(), row.beta);
    EXPECT_EQ(version.IsTest(), row.test);
    EXPECT_EQ(version.IsDebug(), row.debug);
}

INSTANTIATE_TEST_SUITE_P(VersionInfo, Flavours,
                         testing::Values(FlavourRow{"", false, false, false}, FlavourRow{"beta", true, false, false},
                                         FlavourRow{"BETA Debug", true, false, true},
                                         FlavourRow{"for test, beta; debug.", true, true, true},
                                         FlavourRow{"alphabeta testing debugger", false, false, false}));

TEST(VersionInfo, NamesTheProgram)
{
    EXPECT_EQ(VersionInfo::Title(), QStringLiteral("Fenrik Diagnostics"));
    EXPECT_TRUE(VersionInfo::Copyright().contains(VersionInfo::Title()));
}

TEST(VersionInfo, ThisBuildHasAVersion)
{
    EXPECT_TRUE(VersionInfo::OfThisBuild().GetVersionRelease().endsWith(QStringLiteral(".3")));
    EXPECT_NE(VersionInfo::OfThisBuild().MajorMinorRevision(), QStringLiteral("0.0.0"));
}

}  // namespace
}  // namespace fenrik
