// The real program.

#include "relay/RelayClient.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <thread>

namespace fenrik {
namespace {

using enum PipeFrameType;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class RelayProcess : public testing::Test {
protected:
    void TearDown() override
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
    void Start(const QStringList& arguments) { process.start(QStringLiteral(FENRIK_RELAY_PROGRAM), arguments); }
    std::string ReadyAddress()
    {
        while (!process.canReadLine() && process.waitForReadyRead(5000)) {
        }
        const auto line = process.readLine().trimmed().toStdString();
        EXPECT_THAT(line, StartsWith("ready "));
        return line.substr(line.find(' ') + 1);
    }
    static RelayClient Client(const std::string& address)
    {
        return {address, [] { std::this_thread::sleep_for(1ms); }};
    }
    int ExitCode()
    {
        EXPECT_TRUE(process.waitForFinished(5000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return process.exitCode();
    }
    std::string ErrorText() { return process.readAllStandardError().toStdString(); }

    QProcess process;
};

TEST_F(RelayProcess, RelaysAndTellsItsUsersWhenItIsTerminated)
{
    Start({"--listen", "127.0.0.1:0", "--consent", "grant"});
    const auto address = ReadyAddress();
    auto ada = Client(address);
    ada.LogOn("Ada");
    auto bob = Client(address);
    bob.LogOn("Bob");
    ada.Send(framePipeTo, PipeNumber(bob.Id()));
    EXPECT_EQ(ada.Read()->type, framePiped);
    EXPECT_EQ(ada.Read()->type, frameBussAccessReply);
    EXPECT_EQ(bob.Read()->type, framePiped);
    ada.Send(frameNetworkMessage, "123456");
    EXPECT_EQ(*bob.Read(), (PipeFrame{frameNetworkMessage, "123456"}));

    process.terminate();
    for (auto* client : {&ada, &bob}) {
        const auto last = client->ReadToEnd();
        ASSERT_THAT(last, SizeIs(2));
        EXPECT_EQ(last[0], (PipeFrame{frameServerError, "The server is being shut down."}));
        EXPECT_EQ(last[1].type, framePipeBroken);
        client->Close();
    }
    EXPECT_EQ(ExitCode(), 0);
    const auto log = ErrorText();
    EXPECT_THAT(log, HasSubstr("\"Ada\" at 127.0.0.1 logged on"));
    EXPECT_THAT(log, HasSubstr("asked to end with 2 users logged on"));
}

class Signals : public RelayProcess, public testing::WithParamInterface<int> {};

TEST_P(Signals, EndTheProgramCleanly)
{
    Start({"--listen", "127.0.0.1:0"});
    (void)ReadyAddress();
    ::kill(pid_t(process.processId()), GetParam());
    EXPECT_EQ(ExitCode(), 0);
}

INSTANTIATE_TEST_SUITE_P(Relay, Signals, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(RelayProcess, EndsAtASecondSignalThoughAClientHoldsOn)
{
    Start({"--listen", "127.0.0.1:0"});
    auto ada = Client(ReadyAddress());
    ada.LogOn("Ada");
    process.terminate();
    EXPECT_THAT(ada.ReadToEnd(), SizeIs(1));
    process.terminate();
    EXPECT_EQ(ExitCode(), 0);
}

TEST_F(RelayProcess, ListensAtSeveralAddressesOfBothKinds)
{
    Start({"--listen", "127.0.0.1:0", "--listen", "[::1]:0"});
    const auto first = ReadyAddress();
    const auto second = ReadyAddress();
    EXPECT_THAT(second, StartsWith("[::1]:"));
    auto ada = Client(first);
    ada.LogOn("Ada");
    auto bob = Client(second);
    bob.LogOn("Bob");
    bob.Send(frameUserListRequest);
    const auto list = PipeUserRecord::DecodeList(bob.Read()->body).value();
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].clientIP, PipeField("127.0.0.1", 15));
    EXPECT_EQ(list[1].clientIP, PipeField("::1", 15));
}

TEST_F(RelayProcess, AppendsItsLogToAFileAndOpensItAnewWhenAsked)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath("relay.log");
    Start({"--listen", "127.0.0.1:0", "--log", path});
    const auto address = ReadyAddress();
    ASSERT_TRUE(QFile::rename(path, path + ".1"));
    ::kill(pid_t(process.processId()), SIGHUP);
    auto ada = Client(address);
    for (int i = 0; i < 5000 && !QFile::exists(path); ++i)
        std::this_thread::sleep_for(1ms);
    ada.LogOn("Ada");
    process.terminate();
    ada.Close();
    EXPECT_EQ(ExitCode(), 0);
    const auto textOf = [](const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    };
    EXPECT_THAT(textOf(path + ".1"), HasSubstr("listens at 127.0.0.1:"));
    EXPECT_THAT(textOf(path), HasSubstr("\"Ada\" at 127.0.0.1 logged on"));
    EXPECT_EQ(ErrorText(), "");
}

TEST_F(RelayProcess, EndsWithItsCodesWhenItCannotBegin)
{
    Start({"--listen", "127.0.0.1"});
    EXPECT_EQ(ExitCode(), 2);
    EXPECT_THAT(ErrorText(), HasSubstr("127.0.0.1 is not ADDRESS:PORT"));
    Start({});
    EXPECT_EQ(ExitCode(), 2);
    const auto taken = Address::Parse("127.0.0.1:0").Listen();
    Start({"--listen", QString::fromStdString(Address::OfSocket(taken).Text())});
    EXPECT_EQ(ExitCode(), 1);
    EXPECT_THAT(ErrorText(), HasSubstr("Address already in use"));
    Start({"--listen", "127.0.0.1:0", "--log", "/no/such/folder/relay.log"});
    EXPECT_EQ(ExitCode(), 1);
}

TEST_F(RelayProcess, TellsItsOptionsAndItsVersion)
{
    Start({"--help"});
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_THAT(process.readAllStandardOutput().toStdString(), StartsWith("Usage: fenrik-relay"));
    Start({"--version"});
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "fenrik-relay " FENRIK_VERSION "\n");
}

TEST_F(RelayProcess, RefusesAClientForWhichItHasNoHandleAndServesTheOthers)
{
    process.setChildProcessModifier([] {
        const rlimit few{16, 16};
        ::setrlimit(RLIMIT_NOFILE, &few);
    });
    Start({"--listen", "127.0.0.1:0"});
    const auto address = ReadyAddress();
    auto ada = Client(address);
    ada.LogOn("Ada");
    std::vector<RelayClient> clients;
    for (int i = 0; i < 20; ++i)
        clients.push_back(Client(address));
    EXPECT_THAT(clients.back().ReadToEnd(), testing::IsEmpty());
    EXPECT_THAT(ada.ReadAll(), testing::IsEmpty());
    clients.clear();
    ada.Close();
    process.terminate();
    EXPECT_EQ(ExitCode(), 0);
    EXPECT_THAT(ErrorText(), HasSubstr("may open no more files"));
}

}  // namespace
}  // namespace fenrik
