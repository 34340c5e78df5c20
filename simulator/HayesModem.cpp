#include "simulator/HayesModem.h"

#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace fenrik {

namespace {

constexpr double kThinking = 0.02;  // seconds
constexpr double kRinging = 6;
constexpr std::size_t kLongestLine = 255;
constexpr std::size_t kLongAnswer = 10000;
constexpr std::size_t kMostUnsent = 4096;

struct ResultRow {
    const char* words;
    const char* digits;
};

constexpr ResultRow kResults[] = {{"OK", "0"},    {"CONNECT 57600", "1"}, {"RING", "2"}, {"NO CARRIER", "3"},
                                  {"ERROR", "4"}, {"NO DIALTONE", "6"},   {"BUSY", "7"}, {"NO ANSWER", "8"}};

std::string Upper(std::string_view text)
{
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](unsigned char c) { return char(std::toupper(c)); });
    return upper;
}

std::string TakeDigits(std::string_view& text)
{
    const auto end = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string digits(text.substr(0, end));
    text.remove_prefix(end);
    return digits;
}

std::string DigitsIn(std::string_view text)
{
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](unsigned char c) { return std::isdigit(c); });
    return digits;
}

/// "=" and a number, as they stand behind a register.
void SkipValue(std::string_view& text)
{
    if (!text.starts_with('='))
        return;
    text.remove_prefix(1);
    (void)TakeDigits(text);
}

}  // namespace

HayesModem::HayesModem(const TimeSource& time, TrafficLog& log, HayesModemHost& host)
    : mTime(time), mLog(log), mHost(host), mModule(log, *this)
{
}

// --- What the computer says ----------------------------------------------------------------------------------------

void HayesModem::Receive(std::span<const std::uint8_t> bytes)
{
    Step();
    for (const auto byte : bytes) {
        switch (mState) {
        case State::Dialing:
            mLog.Note("modem gives the call up");
            HangUp();
            Answer("NO CARRIER");
            break;
        case State::Online:
            HearOnline(byte);
            break;
        default:
            HearCommand(byte);
            break;
        }
        mLastHeard = mTime.Seconds();
    }
}

void HayesModem::HearCommand(std::uint8_t byte)
{
    if (mEcho)
        Say(std::string(1, char(byte)), 0);
    if (byte == '\r') {
        Execute(std::exchange(mLine, {}));
    } else if (byte != '\n' && mLine.size() < kLongestLine) {
        mLine += char(byte);
    }
}

void HayesModem::HearOnline(std::uint8_t byte)
{
    if (byte != '+')
        mPluses = 0;
    else if (mTime.Seconds() - mLastHeard >= kGuardTime)
        mPluses = 1;
    else if (mPluses > 0)
        ++mPluses;
    if (mCalled->answer != PhoneNumber::Answer::NoModule)
        mModule.Hear(byte);
}

void HayesModem::Execute(const std::string& line)
{
    const std::string upper = Upper(line);
    const auto attention = upper.find("AT");
    if (attention == std::string::npos)
        return;  // as "+++" before it, outside of a call
    mLog.Note("modem hears " + upper.substr(attention));
    if (const auto result = Run(std::string_view(upper).substr(attention + 2)))
        Answer(*result);
}

/// The result of the commands behind "AT"; nothing while it is still to come.
std::optional<std::string> HayesModem::Run(std::string_view commands)
{
    while (!commands.empty()) {
        const char command = commands.front();
        commands.remove_prefix(1);
        if (command == ' ')
            continue;
        if (command == 'D') {
            Dial(DigitsIn(commands));
            return std::nullopt;
        }
        if (command == '&' && !commands.empty())
            commands.remove_prefix(1);
        const std::string number = TakeDigits(commands);
        if (command == 'O')
            return GoOnline();
        if (command == 'S')
            SkipValue(commands);
        else if (!Set(command, number))
            return "ERROR";
    }
    return "OK";
}

/// A command without a result of its own; false if the modem doesn't know it.
bool HayesModem::Set(char command, const std::string& number)
{
    constexpr std::string_view kHeardOnly = "&LMQWX";
    switch (command) {
    case 'E':
        mEcho = number == "1";
        return true;
    case 'V':
        mWords = number != "0";
        return true;
    case 'H':
        HangUp();
        return true;
    case 'Z':
        HangUp();
        Reset();
        return true;
    case 'I':
        Say((mEcho ? "\r\n" : "") + std::string(number == "3" ? kName : "560") + "\r\n", kThinking);
        return true;
    default:
        return kHeardOnly.find(command) != std::string_view::npos;
    }
}

std::string HayesModem::GoOnline()
{
    if (mState != State::Escaped)
        return "NO CARRIER";
    mState = State::Online;
    return "CONNECT 57600";
}

// --- The call ------------------------------------------------------------------------------------------------------

void HayesModem::Dial(const std::string& digits)
{
    using Who = PhoneNumber::Answer;
    if (mNoDialTone)
        return Answer("NO DIALTONE");
    mCalled = FindPhoneNumber(digits);
    mLog.Note("modem dials " + digits + ", " + std::string(mCalled ? mCalled->who : "nobody"));
    mState = State::Dialing;
    const bool rings = mCalled && mCalled->answer == Who::NoAnswer;
    mDialDone = mTime.Seconds() + (rings ? std::min(kRinging, 3 * mDialTime) : mDialTime);
}

void HayesModem::FinishDial()
{
    using Who = PhoneNumber::Answer;
    mDialDone = kNever;
    mState = State::Command;
    if (!mCalled || mCalled->answer == Who::NoCarrier)
        Answer("NO CARRIER");
    else if (mCalled->answer == Who::Busy)
        Answer("BUSY");
    else if (mCalled->answer == Who::NoAnswer)
        Answer("NO ANSWER");
    else
        Connect();
}

void HayesModem::Connect()
{
    mState = State::Online;
    mPluses = 0;
    mModule.Answer();
    mLog.Note("connected to " + std::string(mCalled->who));
    Answer("CONNECT 57600");
    if (mHangUpAt == ModemOrder::Step::Connect)
        LoseCarrier();
}

void HayesModem::HangUp()
{
    if (mState != State::Command)
        mLog.Note("modem hangs up");
    mState = State::Command;
    mCalled = nullptr;
    mDialDone = kNever;
    mPluses = 0;
    mLine.clear();
}

void HayesModem::LoseCarrier()
{
    if (mState != State::Online && mState != State::Escaped)
        return;
    HangUp();
    mLog.Note("carrier lost");
    Answer("NO CARRIER");
}

void HayesModem::Reset()
{
    mEcho = true;
    mWords = true;
}

void HayesModem::Abandon()
{
    HangUp();
    mSaid.clear();
    mOut.clear();
    mBlocked = false;
}

bool HayesModem::Carries(PhoneNumber::Answer vehicle) const
{
    return mState == State::Online && mCalled->answer == vehicle && mModule.PassesThrough();
}

std::size_t HayesModem::TakeFromVehicle(std::span<const std::uint8_t> bytes)
{
    if (mOut.size() > kMostUnsent)
        return 0;
    const auto escaped = mModule.Escape(bytes);
    Say(escaped, 0);
    Flush();
    return bytes.size();
}

bool HayesModem::CallLasts(char command)
{
    const bool drops = (command == 'v' && mHangUpAt == ModemOrder::Step::Version) ||
                       (command == 'p' && mHangUpAt == ModemOrder::Step::PassThrough);
    if (drops)
        LoseCarrier();
    return !drops;
}

// --- What the modem says -------------------------------------------------------------------------------------------

void HayesModem::Answer(const std::string& result)
{
    mLog.Note("modem says " + result);
    const auto* row = std::ranges::find(kResults, result, &ResultRow::words);
    if (!mWords && row != std::end(kResults))
        return Say(std::string(row->digits) + "\r", kThinking);
    const std::string line = mLong ? result + std::string(kLongAnswer - result.size(), '.') : result;
    Say("\r\n" + line + "\r\n", kThinking);
}

void HayesModem::Say(const std::string& bytes, double delay)
{
    std::string said = bytes;
    if (mGarble)
        std::ranges::transform(said, said.begin(), [](char c) { return char(c ^ 0x55); });
    double due = mTime.Seconds() + delay + (delay > 0 ? mLate : 0);
    if (!mSaid.empty())
        due = std::max(due, mSaid.back().due);
    if (!mSilent)
        mSaid.push_back({due, said});
}

void HayesModem::Flush()
{
    while (!mSaid.empty() && mSaid.front().due <= mTime.Seconds()) {
        mOut += mSaid.front().bytes;
        mSaid.pop_front();
    }
    const auto* start = reinterpret_cast<const std::uint8_t*>(mOut.data());
    mOut.erase(0, mHost.WriteToComputer({start, mOut.size()}));
    mBlocked = !mOut.empty();
}

void HayesModem::Step()
{
    if (mState == State::Dialing && mTime.Seconds() >= mDialDone)
        FinishDial();
    if (mState == State::Online && mPluses == 3 && mTime.Seconds() - mLastHeard >= kGuardTime) {
        mPluses = 0;
        mState = State::Escaped;
        mLog.Note("modem comes back to commands");
        Answer("OK");
    }
    Flush();
}

double HayesModem::NextDue() const
{
    double due = mDialDone;
    if (mState == State::Online && mPluses == 3)
        due = std::min(due, mLastHeard + kGuardTime);
    if (!mSaid.empty())
        due = std::min(due, mSaid.front().due);
    return due;
}

void HayesModem::Obey(const ModemOrder& order)
{
    using Kind = ModemOrder::Kind;
    using Order = ModemOrder;
    using Modem = HayesModem;
    struct Row {
        Kind kind;
        void (*obey)(Modem& modem, const Order& order);
    };
    static constexpr Row kRows[] = {
        {Kind::Drop, [](Modem& m, const Order&) { m.LoseCarrier(); }},
        {Kind::Silent, [](Modem& m, const Order& o) { m.mSilent = o.on; }},
        {Kind::Garble, [](Modem& m, const Order& o) { m.mGarble = o.on; }},
        {Kind::Late, [](Modem& m, const Order& o) { m.mLate = o.seconds; }},
        {Kind::Long, [](Modem& m, const Order& o) { m.mLong = o.on; }},
        {Kind::Echo, [](Modem& m, const Order& o) { m.mEcho = o.on; }},
        {Kind::DialTone, [](Modem& m, const Order& o) { m.mNoDialTone = o.on; }},
        {Kind::DialTime, [](Modem& m, const Order& o) { m.mDialTime = o.seconds; }},
        {Kind::Note, [](Modem& m, const Order& o) { m.mModule.SayNote(o.note); }},
        {Kind::Notes, [](Modem& m, const Order& o) { m.mModule.SetNotesEvery(o.count); }},
        {Kind::HangUpAt, [](Modem& m, const Order& o) { m.mHangUpAt = o.step; }},
        {Kind::ModuleDeaf, [](Modem& m, const Order& o) { m.mModule.SetDeaf(o.on); }},
    };
    std::ranges::find(kRows, order.kind, &Row::kind)->obey(*this, order);
}

}  // namespace fenrik
