#include "LogFixture.h"
#include "platform/Error.h"

#include <QDir>

#include <csignal>
#include <sys/resource.h>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// No file of this process may grow beyond so many bytes, as on a disk that is nearly full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : mFormerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &mFormerLimit);
        const rlimit small{bytes, mFormerLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &mFormerLimit);
        std::signal(SIGXFSZ, mFormerHandler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit mFormerLimit{};
    void (*mFormerHandler)(int);
};

class LogFailure : public LogTest {
protected:
    void Connect()
    {
        log.BeginConnection();
        log.TellOnce(errors, "Connect", [this] { log.CreateLogHeader00("Connected - "); });
    }

    void Show(int data)
    {
        log.TellOnce(errors, "Display", [this, data] { log.LogToFile(Message(12, data)); });
    }
};

struct Folder {
    const char* name;
    const char* path;
};

class UnusableFolder : public LogFailure, public testing::WithParamInterface<Folder> {};

TEST_P(UnusableFolder, IsToldOnceForHeadAndLinesTogether)
{
    run.DiagLogPath = GetParam().path;
    Connect();
    for (int i = 0; i < 3; ++i)
        Show(i);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kPathFileAccess);
    EXPECT_EQ(errors.reports[0].where, "Connect");
    EXPECT_TRUE(errors.reports[0].description.contains(log.Path()));
}

INSTANTIATE_TEST_SUITE_P(Log, UnusableFolder,
                         testing::Values(Folder{"ReadOnly", "/proc"}, Folder{"Missing", "/no such folder"},
                                         Folder{"AFile", "/proc/version"}),
                         [](const auto& test) { return test.param.name; });

TEST_F(LogFailure, AFullDiskIsToldOnce)
{
    ASSERT_TRUE(QFile::link("/dev/full", log.Path()));
    Connect();
    Show(1);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_TRUE(errors.reports[0].description.contains("No space left")) << errors.reports[0].description.toStdString();
}

TEST_F(LogFailure, ADiskThatRunsFullKeepsWholeLinesOnly)
{
    {
        const SmallDisk disk(3 * 104 + 50);
        for (int i = 0; i < 5; ++i)
            Show(i);
    }
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_THAT(Lines(), SizeIs(3));
    Show(7);
    ASSERT_THAT(Lines(), SizeIs(4)) << "with room again the log goes on";
    EXPECT_TRUE(Lines()[3].startsWith("Rear Fog Lamps             7    "));
    EXPECT_EQ(Text().size(), 4 * 104);
}

TEST_F(LogFailure, AFolderRemovedWhileConnectedIsToldOnce)
{
    Connect();
    Show(1);
    EXPECT_THAT(errors.reports, IsEmpty());
    ASSERT_TRUE(QDir(dir.path()).removeRecursively());
    for (int i = 0; i < 3; ++i)
        Show(i);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "Display");
}

TEST_F(LogFailure, TheNextConnectionTellsAnew)
{
    run.DiagLogPath = "/no such folder";
    Connect();
    Connect();
    Show(1);
    EXPECT_THAT(errors.reports, SizeIs(2));
}

TEST_F(LogFailure, AMessageThatComesWhileTheUserReadsTheErrorIsNotToldToo)
{
    class Busy : public ErrorReporter {
    public:
        void ShowError(int, const QString&, const QString&, const QString&) override
        {
            ++told;
            meanwhile();
        }
        int told = 0;
        std::function<void()> meanwhile;
    } reader;
    run.DiagLogPath = "/no such folder";
    reader.meanwhile = [&] { log.TellOnce(reader, "Display", [this] { log.LogToFile(Message(12, 2)); }); };
    log.TellOnce(reader, "Display", [this] { log.LogToFile(Message(12, 1)); });
    EXPECT_EQ(reader.told, 1);
}

TEST_F(LogFailure, ABufferThatCannotBeWrittenIsKept)
{
    settings.LoggingBuffered = true;
    log.LogEntry98(1, "Brakes", 7, "");
    const QString folder = run.DiagLogPath;
    run.DiagLogPath = "/no such folder";
    EXPECT_THROW(log.CommitBuffer(), Error);
    run.DiagLogPath = folder;
    log.CommitBuffer();
    EXPECT_THAT(Lines(), SizeIs(1));
}

}  // namespace
}  // namespace fenrik
