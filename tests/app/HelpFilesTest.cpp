#include "app/HelpFiles.h"

#include "AppFixture.h"

#include <QDir>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct HelpRow {
    const char* entry;
    const char* file;
};

class HelpEntries : public AppTest, public testing::WithParamInterface<HelpRow> {
protected:
    HelpEntries() { QDir(dir.path()).mkdir("Help"); }

    [[nodiscard]] QString Path() const { return dir.path() + "/Help/" + GetParam().file; }

    HelpFiles help{folder, shell, boxes};
};

TEST_P(HelpEntries, OpenTheirFile)
{
    MakeFile(Path(), "pdf");
    EXPECT_TRUE(help.OpenFor(GetParam().entry));
    EXPECT_EQ(shell.opened, QStringList{Path()});
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_P(HelpEntries, SayWhenTheFileIsMissing)
{
    EXPECT_TRUE(help.OpenFor(GetParam().entry));
    EXPECT_THAT(shell.opened, IsEmpty());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "The file " + Path() + " is missing");
}

TEST_P(HelpEntries, SayWhenNoProgramOpensThem)
{
    MakeFile(Path(), "pdf");
    shell.result = Shell::kNoAssociation;
    help.OpenFor(GetParam().entry);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    const QStringList lines = boxes.boxes[0].text.split('\n');
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[0], QString("Acrobat Reader is required to view the ") + GetParam().file);
}

TEST_P(HelpEntries, SayWhenOpeningFails)
{
    MakeFile(Path(), "pdf");
    shell.result = Shell::kAccessDenied;
    help.OpenFor(GetParam().entry);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Error <5> opening " + Path());
}

INSTANTIATE_TEST_SUITE_P(HelpFiles, HelpEntries,
                         testing::Values(HelpRow{"mnuHelpDiagManual", "Fenrik Diagnostics.pdf"},
                                         HelpRow{"mnuHelpSixSteps", "Fenrik Six Step Guide.pdf"},
                                         HelpRow{"mnuHelpConnSpec", "Fenrik Connector Spec.pdf"}),
                         [](const auto& test) { return test.param.entry; });

TEST_F(AppTest, AnEntryWithoutAHelpFileIsNotTaken)
{
    HelpFiles help(folder, shell, boxes);
    EXPECT_FALSE(help.OpenFor("mnuHelpAbout"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

}  // namespace
}  // namespace fenrik
