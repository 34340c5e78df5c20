// Systems that can't be saved: what the user is told, and that the file which was there stays.

#include "SavedSystemFixture.h"

#include <QDateTime>

#include <array>
#include <csignal>
#include <poll.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fenrik {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// No file can grow beyond `bytes` while the object lives, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit{bytes, mBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        mSignal = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mSignal);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit mBefore{};
    void (*mSignal)(int) = nullptr;
};

class SaveFailureTest : public SavedSystemTest {
protected:
    /// Saves once, learns something, and keeps what the file looks like.
    void SaveAndLearn()
    {
        ASSERT_TRUE(Save());
        LearnNode2();
        owner.calls.clear();
        settings.SystemName.clear();
        before = BytesOf(File("Bus.dav"));
    }

    void ExpectNothingClaimed() const
    {
        EXPECT_EQ(settings.SystemName, "");
        EXPECT_THAT(owner.calls, IsEmpty());
        EXPECT_THAT(errors.reports, IsEmpty());
    }

    void ExpectFileAsBefore() const
    {
        ExpectNothingClaimed();
        EXPECT_TRUE(BytesOf(File("Bus.dav")) == before);
        EXPECT_THAT(Files(), ElementsAre("Bus.dav", "ncCommand.dav"));
    }

    void ExpectBox(std::size_t index, const QString& title, const QString& text)
    {
        ASSERT_GT(boxes.boxes.size(), index);
        EXPECT_EQ(boxes.boxes[index].title, title);
        EXPECT_EQ(boxes.boxes[index].text, text);
    }

    [[nodiscard]] QString InUseText() const
    {
        return "The target file <" + File("Bus.dav") +
               "> is currently open.  Please close it before attempting to compile a Custom System Database.";
    }

    void MakeANodesTableRefuse()
    {
        Change({"DROP TABLE [Node 2]", "CREATE VIEW [Node 2] AS SELECT * FROM SystemInfo"});
        before = BytesOf(File("Bus.dav"));
    }

    QByteArray before;
};

TEST_F(SaveFailureTest, AFileThatSomebodyWritesIsCurrentlyOpen)
{
    SaveAndLearn();
    const auto other = Database::OpenDatabase(File("Bus.dav"), true, false);
    EXPECT_FALSE(Save());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    ExpectBox(0, "Make System Database", InUseText());
    ExpectFileAsBefore();
}

TEST_F(SaveFailureTest, AFileThatSomebodyKeepsForReadingIsCurrentlyOpen)
{
    SaveAndLearn();
    {
        const auto other = Database::OpenDatabase(File("Bus.dav"), true, true);
        EXPECT_FALSE(Save());
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        ExpectBox(0, "Make System Database", InUseText());
    }
    ExpectFileAsBefore();
}

TEST_F(SaveFailureTest, AFileMarkedAsReadOnlyIsNotWritten)
{
    SaveAndLearn();
    ASSERT_TRUE(QFile::setPermissions(File("Bus.dav"), QFile::ReadOwner));
    EXPECT_FALSE(Save());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    ExpectBox(0, "Make System Database",
              "The target file <" + File("Bus.dav") +
                  "> is marked as read-only.  Please gain write access to this file before attempting to compile a "
                  "Custom System Database.");
    ExpectFileAsBefore();
}

TEST_F(SaveFailureTest, AFileThatIsNoDatabaseIsKept)
{
    MakeFile(File("Bus.dav"), "no database at all");
    before = BytesOf(File("Bus.dav"));
    EXPECT_FALSE(Save());
    ExpectBox(0, "Make System Database",
              "An unexpected error has occurred while trying to compile a system database: The file " +
                  File("Bus.dav") +
                  " is not a database. (3343)\n\nWould you like to continue making the database anyway?");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
    ExpectFileAsBefore();
}

TEST_F(SaveFailureTest, GoingOnWithoutADatabaseComesToItsEnd)
{
    ASSERT_TRUE(QFile::remove(File("ncCommand.dav")));
    boxes.answers = {QMessageBox::Yes, QMessageBox::Yes, QMessageBox::Yes};
    EXPECT_FALSE(Save());
    EXPECT_THAT(boxes.boxes, SizeIs(2));  // neither the copy nor its opening
    ExpectNothingClaimed();
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(SaveFailureTest, ANodeThatFailsEndsTheWholeUnlessTheUserGoesOn)
{
    SaveAndLearn();
    MakeANodesTableRefuse();
    boxes.answers = {QMessageBox::No};
    EXPECT_FALSE(Save());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].title, "Make Commands Database");
    EXPECT_THAT(boxes.boxes[0].text.toStdString(),
                HasSubstr("An unexpected error has occurred while trying to compile a commands database: "));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(),
                HasSubstr("\n\nWould you like to continue making the database anyway?"));
    ExpectFileAsBefore();
}

TEST_F(SaveFailureTest, ANodeThatFailsCanBeSkipped)
{
    SaveAndLearn();
    Node(1).setName(QStringLiteral("Front"));
    Node(3).setName(QStringLiteral("Roof"));
    MakeANodesTableRefuse();
    boxes.answers = {QMessageBox::Yes};
    EXPECT_FALSE(Save());  // it lacks a node, so it is not called saved
    EXPECT_THAT(boxes.boxes, SizeIs(1));
    ExpectNothingClaimed();
    EXPECT_THAT(Rows("Node 1"), Contains("Node Name=Front"));
    EXPECT_THAT(Rows("Node 3"), Contains("Node Name=Roof"));
    EXPECT_THAT(Rows("SystemInfo"), ElementsAre("Node Count=3", "Version=1+"));
}

TEST_F(SaveFailureTest, SystemInfoThatCantBeReadCanBeWrittenAnew)
{
    SaveAndLearn();
    Change({"DROP TABLE SystemInfo", "CREATE TABLE SystemInfo (Other TEXT)"});
    boxes.answers = {QMessageBox::Yes};
    EXPECT_FALSE(Save());
    EXPECT_THAT(Rows("SystemInfo"), ElementsAre("Node Count=3", "Version=1+"));
    EXPECT_TRUE(Save());
}

TEST_F(SaveFailureTest, AFullDiskLeavesAnExistingFileAsItWas)
{
    SaveAndLearn();
    for (int i = 0; i < 20; ++i)
        Node(3).setName(Node(3).Name() + QString(500, 'x'));
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        boxes.boxes.clear();
        boxes.answers.assign(10, answer);
        {
            const FullDisk disk(rlim_t(before.size()));
            EXPECT_FALSE(Save());
        }
        ASSERT_THAT(boxes.boxes, Not(IsEmpty()));
        EXPECT_THAT(boxes.boxes[0].text.toStdString(), HasSubstr("An unexpected error has occurred"));
        ExpectNothingClaimed();
        EXPECT_THAT(Rows("SystemInfo"), ElementsAre("Node Count=3", "Version=1+"));
        EXPECT_THAT(Rows("Node 3"), Contains("Node Name="));
    }
    EXPECT_TRUE(Save());
}

TEST_F(SaveFailureTest, AFullDiskLeavesNoNewFile)
{
    LearnNode2();
    const auto size = QFileInfo(File("ncCommand.dav")).size();
    for (const auto limit : {rlim_t(0), rlim_t(size / 2), rlim_t(size)}) {
        const FullDisk disk(limit);
        EXPECT_FALSE(Save());
        EXPECT_THAT(Files(), ElementsAre("ncCommand.dav")) << limit;
    }
    ExpectNothingClaimed();
    EXPECT_TRUE(Save());
}

TEST_F(SaveFailureTest, ATruncatedFileIsToldAndKept)
{
    SaveAndLearn();
    const QByteArray whole = before;
    for (qsizetype size = 0; size < whole.size(); size += 1000) {
        before = whole.first(size);
        MakeFile(File("Bus.dav"), before);
        boxes.boxes.clear();
        EXPECT_FALSE(Save()) << size;
        EXPECT_THAT(boxes.boxes, SizeIs(1)) << size;
        ExpectFileAsBefore();
    }
}

/// Another run of the tool, which does nothing but save, each time under another name of its nodes, until it is killed.
class SavingProcess {
public:
    explicit SavingProcess(const std::function<void(int round)>& save)
    {
        if (::pipe(mBegun.data()) != 0)
            throw std::runtime_error("no pipe");
        mProcess = ::fork();
        for (int round = 1; mProcess == 0; ++round) {
            if (::write(mBegun[1], "x", 1) != 1)
                ::_exit(1);
            save(round);
        }
    }
    ~SavingProcess()
    {
        ::kill(mProcess, SIGKILL);
        ::waitpid(mProcess, nullptr, 0);
        for (const int end : mBegun)
            ::close(end);
    }
    SavingProcess(const SavingProcess&) = delete;
    SavingProcess& operator=(const SavingProcess&) = delete;

    /// Waits until it has begun to save for the `round`th time.
    void WaitFor(int round)
    {
        char bytes[1];
        while (round-- > 0 && ::read(mBegun[0], bytes, 1) == 1) {
        }
    }

private:
    std::array<int, 2> mBegun{};
    pid_t mProcess = -1;
};

TEST_F(SaveFailureTest, AKilledToolLeavesTheFileOfTheSaveBeforeOrAWholeNewOne)
{
    constexpr int kKills = 25;
    int cut = 0;
    ASSERT_TRUE(Save());
    for (int kill = 0; kill < kKills; ++kill) {
        {
            SavingProcess other([this](int round) {
                for (int number = 1; number <= 3; ++number)
                    Node(number).setName(QStringLiteral("%1 %2").arg(round).arg(QString(3000, 'x')));
                Save();
            });
            other.WaitFor(2);
            ::poll(nullptr, 0, kill);  // the moment of the kill moves through the save
        }
        cut += QFile::exists(File("Bus.dav-journal")) ? 1 : 0;
        Load();
        EXPECT_THAT(boxes.boxes, IsEmpty());
        EXPECT_FALSE(Node(1).Name().isEmpty());
        EXPECT_EQ(Node(2).Name(), Node(1).Name());
        EXPECT_EQ(Node(3).Name(), Node(1).Name());
    }
    RecordProperty("killed_inside_a_save", cut);
    EXPECT_TRUE(Save());
}

TEST_F(SaveFailureTest, AKilledToolLeavesNoNewFileThatIsNotWhole)
{
    for (int kill = 0; kill < 25; ++kill) {
        SavingProcess other([this, kill](int round) {
            for (int number = 1; number <= 3; ++number)
                Node(number).setName(QString(3000, 'x'));
            Save(QStringLiteral("New %1-%2").arg(kill).arg(round));
        });
        other.WaitFor(2);
        ::poll(nullptr, 0, kill);
    }
    const QStringList made = QDir(folder.path()).entryList({"New*.dav"}, QDir::Files);
    EXPECT_GE(made.size(), 25);
    for (const QString& name : made) {
        EXPECT_TRUE(TableDefExists(*Database::OpenDatabase(File(name), false, true), "Node 3")) << name.toStdString();
        EXPECT_FALSE(QFile::exists(File(name + "-journal"))) << name.toStdString();
    }
}

struct LeftoverRow {
    const char* name;
    int days;  // since it was written
    bool stays;
};

TEST_F(SaveFailureTest, WhatAKilledToolHasLeftBehindGoesADayLater)
{
    const LeftoverRow rows[] = {
        {"saving-0123abcd", 2, false},        {"saving-0123abcd-journal", 2, false}, {"saving-4567ef01", 0, true},
        {"saving-4567ef01-journal", 0, true}, {"saving-holidays", 2, true},          {"saving-0123abcd.dav", 2, true},
    };
    for (const LeftoverRow& row : rows) {
        QFile file(File(row.name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-row.days), QFile::FileModificationTime));
    }
    EXPECT_TRUE(Save());
    for (const LeftoverRow& row : rows)
        EXPECT_EQ(QFile::exists(File(row.name)), row.stays) << row.name;
}

}  // namespace
}  // namespace fenrik
