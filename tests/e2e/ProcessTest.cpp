// The tool as a user or a session manager meets it: as a process.

#include "e2e/Display.h"
#include "e2e/PortableCopy.h"
#include "e2e/RunUntil.h"
#include "e2e/VehicleProcess.h"

#include <QDir>
#include <QProcess>
#include <csignal>
#include <gmock/gmock.h>

namespace fenrik {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr int kPatienceMs = 60'000;

bool Eventually(const std::function<bool()>& holds)
{
    return RunUntil(holds, kPatienceMs);
}

class ToolProcess : public testing::Test {
protected:
    void TearDown() override
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    /// Starts the tool and waits until its window is open.
    void Start(const QProcessEnvironment& environment)
    {
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(copy.CopyTool(), QStringList());
        // The folder of the logs is made when the window is open.
        ASSERT_TRUE(Eventually([this] { return QDir(copy.Path("bin/diaglogs")).exists() || HasEnded(); }));
        ASSERT_FALSE(HasEnded());
    }

    [[nodiscard]] bool HasEnded() const { return process.state() == QProcess::NotRunning; }

    /// Sends the signal; gives the exit code, -1 if the process does not end or is killed by it.
    int EndBy(int signal)
    {
        ::kill(pid_t(process.processId()), signal);
        const bool ended = Eventually([this] { return HasEnded(); });
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    PortableCopy copy;
    VehicleProcess vehicle{copy};
    QProcess process;
};

struct Named {
    const char* name;
    int signal;

    friend void PrintTo(const Named& named, std::ostream* out) { *out << named.name; }
};

class ToolProcessBySignal : public ToolProcess, public testing::WithParamInterface<Named> {};

TEST_P(ToolProcessBySignal, SavesItsSettingsAndEndsWell)
{
    auto environment = copy.Environment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    ASSERT_NO_FATAL_FAILURE(Start(environment));
    ASSERT_THAT(copy.StoredSettings().toStdString(), Not(HasSubstr("FirstRun")));
    EXPECT_EQ(EndBy(GetParam().signal), 0);
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("FirstRun=False"));
    EXPECT_FALSE(copy.HasErrorLog());
}

INSTANTIATE_TEST_SUITE_P(Process, ToolProcessBySignal,
                         testing::Values(Named{"Terminate", SIGTERM}, Named{"Interrupt", SIGINT}),
                         [](const auto& row) { return row.param.name; });

TEST_F(ToolProcess, OnADisplayConnectsByItsKeyAndEndsWhenTerminated)
{
    if (const std::string missing = Display::Missing(); !missing.empty())
        GTEST_SKIP() << missing << " is not installed";
    Display display;
    ASSERT_NO_FATAL_FAILURE(display.Start());
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n"));
    ASSERT_NO_FATAL_FAILURE(Start(display.On(copy.Environment())));

    QString window;
    ASSERT_TRUE(
        Eventually([&] { return !(window = display.LargeWindow(QStringLiteral("Fenrik Diagnostics"))).isEmpty(); }));
    display.Press(window, QStringLiteral("ctrl+k"));
    ASSERT_TRUE(Eventually([this] { return vehicle.Meanings("TX").size() == 1 + 8; }));
    const auto heard = vehicle.Meanings("RX");
    EXPECT_EQ(heard.front(), "wake");
    for (int node = 1; node <= 8; ++node)
        EXPECT_THAT(heard, Contains("901 state=0 ext=0 data=" + std::to_string(node)));
    ASSERT_TRUE(Eventually([this] { return copy.LoggedLines().size() == 2 * 8; }));

    EXPECT_EQ(EndBy(SIGTERM), 0);
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("CommPort=5"));
    EXPECT_FALSE(copy.HasErrorLog());
    EXPECT_EQ(vehicle.End(), 0);
}

}  // namespace
}  // namespace fenrik
