#include "simulator/Device.h"

#include <QProcess>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

namespace fs = std::filesystem;

namespace fenrik {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

/// The real program, with a configuration home of its own.
class VehicleProgram : public testing::Test {
protected:
    void SetUp() override
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", folder.path());
        process.setProcessEnvironment(environment);
    }
    void TearDown() override
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    void Start(const QStringList& arguments) { process.start(QStringLiteral(FENRIK_VEHICLE_PROGRAM), arguments); }
    std::string ReadLine()
    {
        while (!process.canReadLine() && process.waitForReadyRead(5000)) {
        }
        return process.readLine().trimmed().toStdString();
    }
    std::string Control(const char* statement)
    {
        process.write(QByteArray(statement) + '\n');
        return ReadLine();
    }
    int ExitCode()
    {
        EXPECT_TRUE(process.waitForFinished(5000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return process.exitCode();
    }
    [[nodiscard]] std::string Path(const char* name) const { return (root / name).string(); }
    QString WriteFile(const char* name, const char* text)
    {
        std::ofstream(root / name) << text;
        return QString::fromStdString(Path(name));
    }
    [[nodiscard]] bool LinkThere() const { return fs::exists(fs::symlink_status(link)); }

    QTemporaryDir folder;
    fs::path root = folder.path().toStdString();
    fs::path link = root / "fenrik-diagnostics" / "ports" / "com5";
    QProcess process;
};

TEST_F(VehicleProgram, IsTheOlderNetworkWhenItIsAsked)
{
    Start({"--port", "5", "--legacy", "--control", "--scenario", WriteFile("quiet.txt", "quiet\n")});
    ASSERT_THAT(ReadLine(), StartsWith("ready COM5 /dev/pts/"));
    const Device device(link.string());
    ASSERT_TRUE(device.Open());
    const ByteList tokens = device.Read(3);
    ASSERT_EQ(tokens.size(), 3);
    for (const auto token : tokens)
        EXPECT_THAT(token, testing::AllOf(testing::Ge(101), testing::Le(106)));
    EXPECT_EQ(Control("message 2 17"), "ok");
    EXPECT_EQ(Control("send 12 on"), "error: unknown statement \"send\"");
    EXPECT_EQ(Control("quit"), "ok");
    EXPECT_EQ(ExitCode(), 0);
}

TEST_F(VehicleProgram, WakesAnswersAPingLogsBothAndRemovesItsLinkWhenTerminated)
{
    const auto log = QString::fromStdString(Path("log.txt"));
    Start({"--port", "5", "--log", log, "--scenario", WriteFile("quiet.txt", "quiet\n")});
    ASSERT_THAT(ReadLine(), StartsWith("ready COM5 /dev/pts/"));
    ASSERT_TRUE(fs::is_symlink(link));

    const Device device(link.string());
    ASSERT_TRUE(device.Open());
    ASSERT_TRUE(device.Write({158}));
    EXPECT_EQ(device.Read(1), ByteList{138});
    ASSERT_TRUE(device.Write(ToBytes({901, false, false, 3})));
    EXPECT_EQ(device.Read(Frame::kSize), ToBytes({902, false, false, 3}));

    process.terminate();
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_FALSE(LinkThere());
    std::stringstream text;
    text << std::ifstream(Path("log.txt")).rdbuf();
    EXPECT_THAT(text.str(), ContainsRegex(" RX 9E  wake\n"));
    EXPECT_THAT(text.str(), ContainsRegex(" TX 8A  awake\n"));
    EXPECT_THAT(text.str(), ContainsRegex(" RX 00 AE 14 00 03 C5  901 state=0 ext=0 data=3\n"));
    EXPECT_THAT(text.str(), ContainsRegex(" TX 00 AE 18 00 03 C9  902 state=0 ext=0 data=3\n"));
}

TEST_F(VehicleProgram, GoesOnWorkingWhenThePortIsClosedAndOpenedAgain)
{
    Start({"--port", "5", "--scenario", WriteFile("quiet.txt", "quiet\n")});
    ASSERT_THAT(ReadLine(), StartsWith("ready"));
    for (int round = 0; round < 3; ++round) {
        const Device device(link.string());
        ASSERT_TRUE(device.Write({158}));
        EXPECT_EQ(device.Read(1), ByteList{138}) << round;
    }
}

TEST_F(VehicleProgram, CarriesOutControlLines)
{
    Start({"--port", "5", "--control", "--scenario", WriteFile("quiet.txt", "quiet\n")});
    ASSERT_THAT(ReadLine(), StartsWith("ready"));
    const Device device(link.string());
    EXPECT_EQ(Control("send 12 on false 100"), "ok");
    EXPECT_EQ(device.Read(Frame::kSize), ToBytes({12, true, false, 100}));
    EXPECT_EQ(Control("sned 12"), "error: unknown statement \"sned\"");
    EXPECT_EQ(Control("quit"), "ok");
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_FALSE(LinkThere());
}

TEST_F(VehicleProgram, CanBeUnpluggedAndPluggedInAgain)
{
    Start({"--port", "5", "--control", "--scenario", WriteFile("quiet.txt", "quiet\n")});
    ASSERT_THAT(ReadLine(), StartsWith("ready"));
    const Device before(link.string());
    EXPECT_EQ(Control("unplug"), "ok");
    EXPECT_FALSE(LinkThere());
    EXPECT_TRUE(before.HungUp());
    EXPECT_THAT(Control("plug"), StartsWith("ready COM5 /dev/pts/"));
    EXPECT_EQ(ReadLine(), "ok");
    const Device after(link.string());
    ASSERT_TRUE(after.Write({158}));
    EXPECT_EQ(after.Read(1), ByteList{138});
}

TEST_F(VehicleProgram, EndsByItselfAfterItsDuration)
{
    Start({"--port", "5", "--duration", "0.05"});
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_FALSE(LinkThere());
}

TEST_F(VehicleProgram, TellsEveryBadLineOfAScenarioAndEnds)
{
    Start({"--port", "5", "--scenario", WriteFile("bad.txt", "quiet\nnonsense\nsend 12\n")});
    EXPECT_EQ(ExitCode(), 2);
    const auto errors = process.readAllStandardError().toStdString();
    EXPECT_THAT(errors, HasSubstr("bad.txt:2: unknown statement \"nonsense\"\n"));
    EXPECT_THAT(errors, HasSubstr("bad.txt:3: on or off is missing\n"));
    EXPECT_FALSE(LinkThere());
}

TEST_F(VehicleProgram, EndsWithItsCodesForBadOptionsAndMissingFiles)
{
    Start({"--port", "99"});
    EXPECT_EQ(ExitCode(), 2);
    Start({"--port", "5", "--scenario", QString::fromStdString(Path("missing.txt"))});
    EXPECT_EQ(ExitCode(), 1);
    Start({"--port", "5", "--log", QString::fromStdString(Path("no/such/folder"))});
    EXPECT_EQ(ExitCode(), 1);
    Start({"--help"});
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_THAT(process.readAllStandardOutput().toStdString(), StartsWith("Usage: fenrik-vehicle"));
}

TEST_F(VehicleProgram, DescribesItsNodesAndWritesTheirImagesInPlaceOfRunning)
{
    Start({"--describe", "--write-images", QString::fromStdString(Path("images")), "--system", "Bus 12"});
    EXPECT_EQ(ExitCode(), 0);
    const auto text = process.readAllStandardOutput().toStdString();
    EXPECT_THAT(text, HasSubstr("node 8 road memory\n"));
    EXPECT_THAT(text, HasSubstr("node 5 road flash\n"));
    EXPECT_THAT(text, HasSubstr("node 3 name \"Door left\"\n"));
    EXPECT_EQ(fs::file_size(root / "images" / "Bus 12_Node 3.bin"), 32768u);
    EXPECT_FALSE(fs::exists(root / "images" / "Bus 12_Node 7.bin"));
    EXPECT_FALSE(LinkThere());
}

TEST_F(VehicleProgram, DescribesOneRoadOfTheNodesThatHaveIt)
{
    const auto scenario = WriteFile("nodes.txt", "node 1 type 2 Door\nnode 2 type 16 Engine\n");
    Start({"--describe", "--road", "memory", "--scenario", scenario});
    EXPECT_EQ(ExitCode(), 0);
    const auto text = process.readAllStandardOutput().toStdString();
    EXPECT_THAT(text, HasSubstr("node 1 road memory\n"));
    EXPECT_THAT(text, testing::Not(HasSubstr("node 2 ")));
}

TEST_F(VehicleProgram, KeepsALinkThatTheUserMade)
{
    fs::create_directories(link.parent_path());
    fs::create_symlink("/dev/null", link);
    Start({"--port", "5"});
    EXPECT_EQ(ExitCode(), 1);
    EXPECT_EQ(fs::read_symlink(link), "/dev/null");
}

}  // namespace
}  // namespace fenrik
