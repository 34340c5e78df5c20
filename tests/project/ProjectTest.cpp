// What holds for the project's files as a whole. Each check has tests beside it that see it fail.

#include "project/Layers.h"
#include "project/ProjectFiles.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kLongestFile = 500;

int LineCount(const ProjectFile& file)
{
    return int(file.text.count(QLatin1Char('\n')));
}

bool IsOverlyLong(const ProjectFile& file)
{
    return file.IsSource() && LineCount(file) > kLongestFile;
}

/// A header is read once and says what it is for.
bool LacksGuardOrDocumentation(const ProjectFile& file)
{
    return file.IsHeader() &&
           !(file.text.contains(QStringLiteral("#pragma once\n")) && file.text.contains(QStringLiteral("///")));
}

QString FormatComplaint(const QStringList& paths, const QString& program = QStringLiteral("clang-format"))
{
    const QString style = QStringLiteral("--style=file:%1/.clang-format").arg(ProjectRoot());
    return Complaint(program, QStringList{QStringLiteral("--dry-run"), QStringLiteral("-Werror"), style} + paths);
}

QString ScriptComplaint(const QString& path)
{
    return Complaint(QStringLiteral("bash"), {QStringLiteral("-n"), path});
}

QStringList PathsThat(bool (*predicate)(const ProjectFile&))
{
    QStringList paths;
    for (const ProjectFile& file : ProjectFiles())
        if (predicate(file))
            paths.append(file.path);
    return paths;
}

TEST(Project, FilesAreFound)
{
    const auto isThis = [](const ProjectFile& file) { return file.path == QStringLiteral("src/link/Frame.h"); };
    EXPECT_EQ(std::count_if(ProjectFiles().begin(), ProjectFiles().end(), isThis), 1);
    const auto isRun = [](const ProjectFile& file) { return file.path == QStringLiteral("run"); };
    EXPECT_EQ(std::count_if(ProjectFiles().begin(), ProjectFiles().end(), isRun), 1);
}

TEST(Project, EveryIncludePointsDownwards)
{
    QStringList wrong;
    for (const ProjectFile& file : ProjectFiles())
        wrong += WrongIncludes(file);
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Project, EverySourceIsFormatted)
{
    QStringList paths = PathsThat([](const ProjectFile& file) { return file.IsSource(); });
    paths.replaceInStrings(QRegularExpression(QStringLiteral("^")), ProjectRoot() + QLatin1Char('/'));
    EXPECT_EQ(FormatComplaint(paths), QString());
}

TEST(Project, NoFileIsOverlyLong)
{
    EXPECT_THAT(PathsThat(IsOverlyLong), IsEmpty());
}

TEST(Project, EveryHeaderHasPragmaOnceAndDocComment)
{
    EXPECT_THAT(PathsThat(LacksGuardOrDocumentation), IsEmpty());
}

TEST(Project, ShellScriptsParse)
{
    for (const QString& path : PathsThat([](const ProjectFile& file) { return file.IsShellScript(); }))
        EXPECT_EQ(ScriptComplaint(ProjectRoot() + QLatin1Char('/') + path), QString());
}

struct Arrow {
    const char* name;
    const char* path;
    const char* header;
    bool allowed;
};

class Arrows : public testing::TestWithParam<Arrow> {};

TEST_P(Arrows, AreJudgedByTheirDirection)
{
    const QString header = QLatin1String(GetParam().header);
    const ProjectFile file{QLatin1String(GetParam().path),
                           QStringLiteral("#pragma once\n\n#include \"%1\"\n#include <QString>\n").arg(header)};
    if (GetParam().allowed)
        EXPECT_THAT(WrongIncludes(file), IsEmpty());
    else
        EXPECT_THAT(WrongIncludes(file), ElementsAre(QStringLiteral("%1:3 includes %2").arg(file.path, header)));
}

INSTANTIATE_TEST_SUITE_P(
    Project, Arrows,
    testing::Values(Arrow{"Down", "src/app/frmDiag.cpp", "platform/Error.h", true},
                    Arrow{"Level", "src/link/CMessage.h", "link/Frame.h", true},
                    Arrow{"Up", "src/link/CMessage.h", "app/frmDiag.h", false},
                    Arrow{"UpByOne", "src/platform/Boxes.cpp", "shared/Clock.h", false},
                    Arrow{"Sideways", "src/remote/Chat.cpp", "modem/Dialler.h", false},
                    Arrow{"LegacyToFace", "src/legacy/FrmDiag98.cpp", "diagnostics/Face.h", true},
                    Arrow{"FaceToLegacy", "src/diagnostics/Face.cpp", "legacy/FrmDiag98.h", false},
                    Arrow{"OptionsToModem", "src/options/frmCommSetup.cpp", "modem/Detection.h", true},
                    Arrow{"OptionsToCatalogue", "src/options/FrmOptions.cpp", "catalogue/Markets.h", true},
                    Arrow{"Subfolder", "src/app/messages/List.cpp", "app/messages/List.h", true},
                    Arrow{"Generated", "src/app/frmError.cpp", "ui_frmError.h", true},
                    Arrow{"OutOfSrc", "src/app/main.cpp", "simulator/Vehicle.h", false},
                    Arrow{"Relative", "src/link/CMessage.h", "../app/frmDiag.h", false},
                    Arrow{"SimulatorToFrame", "simulator/Vehicle.cpp", "link/Frame.h", true},
                    Arrow{"SimulatorToItself", "simulator/Vehicle.cpp", "simulator/Vehicle.h", true},
                    Arrow{"SimulatorToLink", "simulator/Vehicle.cpp", "link/CMsgHandler.h", false},
                    Arrow{"RemoteToPipe", "src/remote/Chat.cpp", "pipe/PipeFrame.h", true},
                    Arrow{"PipeToPlatform", "src/pipe/PipeFrame.cpp", "platform/Error.h", false},
                    Arrow{"RelayToPipe", "relay/Exchange.cpp", "pipe/PipeFrame.h", true},
                    Arrow{"RelayToPlatform", "relay/Exchange.cpp", "platform/Error.h", false},
                    Arrow{"TestToAnything", "tests/link/FrameTest.cpp", "app/frmDiag.h", true}),
    [](const auto& row) { return row.param.name; });

TEST(ProjectChecks, SeeAFileThatIsOverlyLong)
{
    const auto lines = [](int count) { return ProjectFile{QStringLiteral("src/a.cpp"), QString(count, u'\n')}; };
    EXPECT_FALSE(IsOverlyLong(lines(kLongestFile)));
    EXPECT_TRUE(IsOverlyLong(lines(kLongestFile + 1)));
}

TEST(ProjectChecks, SeeAHeaderWithoutGuardOrDocumentation)
{
    const auto header = [](const char* text) { return ProjectFile{QStringLiteral("src/a.h"), QLatin1String(text)}; };
    EXPECT_FALSE(LacksGuardOrDocumentation(header("#pragma once\n/// What it is.\n")));
    EXPECT_TRUE(LacksGuardOrDocumentation(header("/// What it is.\n")));
    EXPECT_TRUE(LacksGuardOrDocumentation(header("#pragma once\nint a;\n")));
}

TEST(ProjectChecks, SeeASourceThatIsNotFormatted)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bad.cpp"));
    MakeFile(path, "int   a ;\n");
    EXPECT_THAT(FormatComplaint({path}).toStdString(), HasSubstr("code should be clang-formatted"));
    MakeFile(path, "int a;\n");
    EXPECT_EQ(FormatComplaint({path}), QString());
}

TEST(ProjectChecks, SeeThatTheFormatterIsMissing)
{
    EXPECT_THAT(FormatComplaint({}, QStringLiteral("no-such-formatter")).toStdString(),
                HasSubstr("no-such-formatter: "));
}

TEST(ProjectChecks, SeeAScriptThatDoesNotParse)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bad"));
    MakeFile(path, "#!/bin/bash\nif true; then\n");
    EXPECT_THAT(ScriptComplaint(path).toStdString(), HasSubstr("syntax error"));
}

TEST(ProjectChecks, KnowAShellScriptByItsFirstLine)
{
    const auto script = [](const char* text) { return ProjectFile{QStringLiteral("run"), QLatin1String(text)}; };
    EXPECT_TRUE(script("#!/usr/bin/env bash\n").IsShellScript());
    EXPECT_TRUE(script("#!/bin/sh\n").IsShellScript());
    EXPECT_FALSE(script("#!/usr/bin/awk -f\n").IsShellScript());
    EXPECT_FALSE(script("echo sh\n").IsShellScript());
}

}  // namespace
}  // namespace fenrik
