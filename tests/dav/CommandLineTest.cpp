#include "dav/CommandLine.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

using Action = CommandLine::Action;

CommandLine Parse(const QStringList& arguments)
{
    return CommandLine::Parse(QStringList{"fenrik-dav"} + arguments);
}

TEST(CommandLine, EachCommandTakesItsOperands)
{
    EXPECT_EQ(Parse({"info", "a.dav"}).action, Action::Info);
    EXPECT_EQ(Parse({"tables", "a.dav"}).file, "a.dav");
    EXPECT_EQ(Parse({"dump", "a.dav", "Node 1"}).table, "Node 1");
    EXPECT_EQ(Parse({"convert", "a.dav", "b.dav"}).target, "b.dav");
}

TEST(CommandLine, ForceMayStandAnywhereBehindTheProgram)
{
    EXPECT_FALSE(Parse({"convert", "a", "b"}).force);
    EXPECT_TRUE(Parse({"convert", "--force", "a", "b"}).force);
    EXPECT_TRUE(Parse({"convert", "a", "b", "-f"}).force);
}

TEST(CommandLine, HelpAndVersionAreShown)
{
    for (const char* option : {"--help", "-h"}) {
        const CommandLine line = Parse({option});
        EXPECT_EQ(line.action, Action::ShowText);
        EXPECT_TRUE(line.text.contains("EXIT STATUS"));
    }
    EXPECT_TRUE(Parse({"--version"}).text.startsWith("fenrik-dav 1."));
}

class MisusedLines : public testing::TestWithParam<QStringList> {};

TEST_P(MisusedLines, SayWhatIsWrong)
{
    const CommandLine line = Parse(GetParam());
    EXPECT_EQ(line.action, Action::Misused);
    EXPECT_FALSE(line.text.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(CommandLine, MisusedLines,
                         testing::Values(QStringList{}, QStringList{"explode"}, QStringList{"info"},
                                         QStringList{"info", "a", "b"}, QStringList{"dump", "a"},
                                         QStringList{"convert", "a"}, QStringList{"convert", "a", "b", "c"},
                                         QStringList{"--what"}, QStringList{"info", "--force", "a"}));

}  // namespace
}  // namespace fenrik
