#include "simulator/HayesModem.h"

#include "simulator/DialIn.h"
#include "simulator/Fixtures.h"
#include "simulator/TrafficLog.h"
#include "simulator/Words.h"

#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// The computer's end of the modem, and the called vehicle's network.
class ModemHostRecorder final : public HayesModemHost {
public:
    std::size_t WriteToComputer(std::span<const std::uint8_t> bytes) override
    {
        const auto taken = std::min(room, bytes.size());
        said.append(bytes.begin(), bytes.begin() + std::ptrdiff_t(taken));
        return taken;
    }
    void ToVehicle(PhoneNumber::Answer, std::uint8_t byte) override { network += char(byte); }

    std::string said;
    std::string network;
    std::size_t room = std::numeric_limits<std::size_t>::max();
};

class HayesModemTest : public testing::Test {
protected:
    void Hear(std::string_view text)
    {
        modem.Receive({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    /// Goes on to `seconds` from now, from one moment at which something is due to the next.
    void Wait(double seconds)
    {
        const double until = time.now + seconds;
        for (double due = modem.NextDue(); due <= until; due = modem.NextDue()) {
            time.now = std::max(time.now, due);
            modem.Step();
        }
        time.now = until;
    }
    /// What the modem says to `text` in that time.
    std::string Answer(std::string_view text, double seconds = 0.1)
    {
        host.said.clear();
        Hear(text);
        Wait(seconds);
        return host.said;
    }
    void Order(const char* statement)
    {
        Words words(statement);
        modem.Obey(ModemOrder::Parse(words));
    }
    void Connect()
    {
        Order("echo off");
        EXPECT_EQ(Answer("ATDT5550100\r", 3), "\r\nCONNECT 57600\r\n");
        EXPECT_EQ(Answer("\\p"), "ACK\r\n");
    }
    std::size_t FromVehicle(std::string_view bytes)
    {
        return modem.TakeFromVehicle({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }

    FakeTime time;
    std::ostringstream notes;
    TrafficLog log{time, &notes};
    ModemHostRecorder host;
    HayesModem modem{time, log, host};
};

// --- Commands ------------------------------------------------------------------------------------------------------

TEST_F(HayesModemTest, EchoesAndAnswers)
{
    EXPECT_EQ(Answer("AT\r"), "AT\r\r\nOK\r\n");
    EXPECT_EQ(Answer("ATI3\r"), "ATI3\r\r\nFenrik Simulated Modem 56K\r\n\r\nOK\r\n");
}

TEST_F(HayesModemTest, TakesACommandInPieces)
{
    EXPECT_EQ(Answer("A"), "A");
    EXPECT_EQ(Answer("T"), "T");
    EXPECT_EQ(Answer("\r"), "\r\r\nOK\r\n");
}

struct CommandRow {
    const char* name;
    std::string command;
    std::string answer;  ///< without an echo
};

class Commands : public HayesModemTest, public testing::WithParamInterface<CommandRow> {};

TEST_P(Commands, AreAnswered)
{
    Order("echo off");
    EXPECT_EQ(Answer(GetParam().command), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(
    HayesModem, Commands,
    testing::Values(CommandRow{"Attention", "at\r", "\r\nOK\r\n"}, CommandRow{"EchoOff", "ATE0\r", "\r\nOK\r\n"},
                    CommandRow{"Several", "AT&F0V1X4S7=60L2\r", "\r\nOK\r\n"},
                    CommandRow{"DigitsForWords", "ATV0\r", "0\r"}, CommandRow{"Unknown", "AT%C\r", "\r\nERROR\r\n"},
                    CommandRow{"HangUp", "ATH0\r", "\r\nOK\r\n"},
                    CommandRow{"NoCallToGoBackTo", "ATO\r", "\r\nNO CARRIER\r\n"},
                    CommandRow{"BehindAnEscape", "+++ATZ\r", "\r\nOK\r\n"}, CommandRow{"NoAttention", "HELLO\r", ""},
                    CommandRow{"Nothing", "\r", ""}, CommandRow{"Endless", std::string(100'000, 'A') + "\r", ""}),
    [](const auto& row) { return row.param.name; });

// --- Calls ---------------------------------------------------------------------------------------------------------

class Calls : public HayesModemTest, public testing::WithParamInterface<CommandRow> {};

TEST_P(Calls, EndAsThePhoneBookSays)
{
    Order("echo off");
    EXPECT_EQ(Answer("ATDT" + GetParam().command + "\r", 1.9), "");
    EXPECT_EQ(Answer("", 10), "\r\n" + GetParam().answer + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    HayesModem, Calls,
    testing::Values(CommandRow{"Vehicle", "5550100", "CONNECT 57600"}, CommandRow{"Coach", "555-0101", "CONNECT 57600"},
                    CommandRow{"Busy", "5550102", "BUSY"}, CommandRow{"NobodyAnswers", "5550103", "NO ANSWER"},
                    CommandRow{"NoModem", "5550104", "NO CARRIER"}, CommandRow{"NoModule", "5550105", "CONNECT 57600"},
                    CommandRow{"NoSuchNumber", "911", "NO CARRIER"}),
    [](const auto& row) { return row.param.name; });

TEST_F(HayesModemTest, WithoutADialToneNothingIsDialled)
{
    Order("no-dialtone");
    EXPECT_THAT(Answer("ATDT5550100\r"), EndsWith("\r\nNO DIALTONE\r\n"));
}

TEST_F(HayesModemTest, AnyByteGivesUpACallThatIsSetUp)
{
    Hear("ATDT5550100\r");
    Wait(1);
    EXPECT_EQ(Answer("x"), "\r\nNO CARRIER\r\n");
    EXPECT_EQ(Answer("", 10), "");
}

TEST_F(HayesModemTest, ComesBackToCommandsOnlyWithBothPauses)
{
    Connect();
    Wait(1);
    EXPECT_EQ(Answer("+++", 1), "\r\nOK\r\n");
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Vehicle));
    EXPECT_EQ(Answer("ATO\r"), "\r\nCONNECT 57600\r\n");
    EXPECT_TRUE(modem.Carries(PhoneNumber::Answer::Vehicle));

    Wait(1);
    EXPECT_EQ(Answer("x+++", 1), "") << "no pause before";
    EXPECT_EQ(Answer("+++x", 1), "") << "no pause behind";
    EXPECT_EQ(Answer("++++", 1), "") << "one too many";
    Wait(1);
    EXPECT_EQ(Answer("+"), "");
    EXPECT_EQ(Answer("+"), "");
    EXPECT_EQ(Answer("+", 1), "\r\nOK\r\n") << "they need not come together";
    EXPECT_EQ(Answer("ATH0\r"), "\r\nOK\r\n");
    EXPECT_EQ(Answer("ATO\r"), "\r\nNO CARRIER\r\n");
}

TEST_F(HayesModemTest, HangsUpWhenThePortIsClosed)
{
    Connect();
    modem.Abandon();
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Vehicle));
    EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
}

// --- The module ----------------------------------------------------------------------------------------------------

TEST_F(HayesModemTest, TheModuleTellsItsVersionAndPassesThrough)
{
    Order("echo off");
    (void)Answer("ATDT5550100\r", 3);
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Vehicle));
    EXPECT_EQ(Answer("noise\\v"), "1.4\r\n");
    EXPECT_EQ(Answer("\\p"), "ACK\r\n");
    EXPECT_TRUE(modem.Carries(PhoneNumber::Answer::Vehicle));
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Coach));
    EXPECT_EQ(Answer("\\P"), "");
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Vehicle));
    EXPECT_EQ(host.network, "");
}

TEST_F(HayesModemTest, ABackslashOfTheNetworkTravelsTwice)
{
    Connect();
    Hear("a\\\\b\\xc");
    EXPECT_EQ(host.network, "a\\bc");
    host.said.clear();
    EXPECT_EQ(FromVehicle("a\\b"), 3u);
    EXPECT_EQ(host.said, "a\\\\b");
}

TEST_F(HayesModemTest, TheModuleSaysNotesBetweenTheNetworksBytes)
{
    Connect();
    host.said.clear();
    Order("note k");
    Order("notes every 2");
    (void)FromVehicle("abc\\e");
    Wait(0);
    EXPECT_EQ(host.said, "\\kab\\nc\\\\\\ne");
}

TEST_F(HayesModemTest, TheModuleHangsUpWhenItIsTold)
{
    Connect();
    EXPECT_EQ(Answer("\\P\\h"), "\r\nNO CARRIER\r\n");
    EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, AModemWithoutAModuleSaysNothing)
{
    (void)Answer("ATE0DT5550105\r", 3);
    EXPECT_EQ(Answer("\\v\\p"), "");
}

TEST_F(HayesModemTest, TakesNoMoreThanItsLineDoes)
{
    Connect();
    host.room = 0;
    std::size_t taken = 0;
    while (const auto some = FromVehicle("0123456789"))
        taken += some;
    EXPECT_GT(taken, 4000u);
    EXPECT_LT(taken, 5000u);
    EXPECT_TRUE(modem.Blocked());
    host.said.clear();
    host.room = 100'000;
    modem.Step();
    EXPECT_FALSE(modem.Blocked());
    EXPECT_EQ(host.said.size(), taken);
}

// --- Misbehaviour --------------------------------------------------------------------------------------------------

TEST_F(HayesModemTest, ACarrierDrops)
{
    Connect();
    host.said.clear();
    Order("drop");
    Wait(0.1);
    EXPECT_EQ(host.said, "\r\nNO CARRIER\r\n");
    EXPECT_FALSE(modem.Carries(PhoneNumber::Answer::Vehicle));
    Order("drop");
    EXPECT_THAT(notes.str(), HasSubstr("carrier lost"));
}

TEST_F(HayesModemTest, CanBeSilentGarbledLateAndLong)
{
    Order("silent");
    EXPECT_EQ(Answer("AT\r"), "");
    Order("silent off");
    Order("echo off");
    Order("late 2");
    EXPECT_EQ(Answer("AT\r", 1.9), "");
    EXPECT_EQ(Answer("", 0.2), "\r\nOK\r\n");
    Order("late 0");
    Order("long");
    EXPECT_EQ(Answer("AT\r"), "\r\nOK" + std::string(9998, '.') + "\r\n");
    Order("long off");
    Order("garble");
    EXPECT_THAT(Answer("AT\r"), Not(HasSubstr("OK")));
}

TEST_F(HayesModemTest, CanHangUpAtEachStep)
{
    Order("echo off");
    Order("dial-time 0.2");
    Order("hang-up connect");
    EXPECT_EQ(Answer("ATDT5550100\r", 1), "\r\nCONNECT 57600\r\n\r\nNO CARRIER\r\n");
    Order("hang-up version");
    EXPECT_EQ(Answer("ATDT5550100\r", 1), "\r\nCONNECT 57600\r\n");
    EXPECT_EQ(Answer("\\v"), "\r\nNO CARRIER\r\n");
    Order("hang-up pass-through");
    (void)Answer("ATDT5550100\r", 1);
    EXPECT_EQ(Answer("\\v"), "1.4\r\n");
    EXPECT_EQ(Answer("\\p"), "\r\nNO CARRIER\r\n");
    Order("hang-up off");
    Order("deaf-module");
    (void)Answer("ATDT5550100\r", 1);
    EXPECT_EQ(Answer("\\v\\p"), "");
}

TEST(ModemOrder, ABadStatementIsTold)
{
    for (const char* statement :
         {"", "dance", "late", "late -1", "note ab", "note \\", "notes", "notes every", "hang-up", "hang-up lunch"}) {
        Words words(statement);
        EXPECT_THROW((void)ModemOrder::Parse(words), std::invalid_argument) << statement;
    }
}

// --- The vehicles --------------------------------------------------------------------------------------------------

class TerminalRecorder final : public DialInHost {
public:
    std::size_t WriteToTerminal(std::span<const std::uint8_t> bytes) override
    {
        said.append(bytes.begin(), bytes.end());
        return bytes.size();
    }
    void ByteForVehicle(std::uint8_t byte) override { forVehicle += char(byte); }

    std::string said;
    std::string forVehicle;
};

class DialInTest : public testing::Test {
protected:
    void Hear(std::string_view text)
    {
        dialIn.Modem().Receive({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    void WaitTo(double until)
    {
        for (double due = dialIn.NextDue(); due <= until; due = dialIn.NextDue()) {
            time.now = std::max(time.now, due);
            dialIn.Step();
        }
        time.now = until;
    }

    FakeTime time;
    TrafficLog log{time, nullptr};
    TerminalRecorder host;
    DialIn dialIn{{}, time, log, host};
};

TEST_F(DialInTest, TheScenariosVehicleIsHeardWhileItIsOnLine)
{
    EXPECT_FALSE(dialIn.Heard());
    Hear("ATDT5550100\r");
    WaitTo(3);
    EXPECT_FALSE(dialIn.Heard());
    Hear("\\pabc");
    EXPECT_TRUE(dialIn.Heard());
    EXPECT_EQ(host.forVehicle, "abc");
}

TEST_F(DialInTest, TheCoachHasThreeNodesOfItsOwn)
{
    Hear("ATDT5550101\r");
    WaitTo(3);
    Hear("\\p");
    WaitTo(3.1);
    host.said.clear();
    for (const std::uint16_t node : {3, 4}) {
        const auto ping = Frame{901, false, false, node}.Encode();
        dialIn.Modem().Receive(ping);
    }
    WaitTo(3.5);
    FrameScanner scanner;
    std::vector<int> answers;
    for (const auto& item :
         scanner.Take({reinterpret_cast<const std::uint8_t*>(host.said.data()), host.said.size()}, 0))
        if (item.kind == Received::Kind::Frame && item.frame.command == 902)
            answers.push_back(item.frame.data);
    EXPECT_THAT(answers, ElementsAre(3));
    EXPECT_FALSE(dialIn.Heard());
    EXPECT_EQ(host.forVehicle, "");
}

}  // namespace
}  // namespace fenrik
