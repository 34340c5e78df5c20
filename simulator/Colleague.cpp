#include "simulator/Colleague.h"

#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <algorithm>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr std::size_t kNameWidth = 50;
constexpr std::size_t kKindWidth = 15;

// Types that the colleague sends or understands.
constexpr int kEcho = 2;
constexpr int kEchoReply = 3;
constexpr int kLogOn = 5;
constexpr int kLoggedOn = 6;
constexpr int kLogOff = 7;
constexpr int kBreakPipe = 21;
constexpr int kPiped = 31;
constexpr int kPipeBroken = 32;
constexpr int kChat = 33;
constexpr int kMessage = 50;
constexpr int kAccessRequest = 51;
constexpr int kAccessReply = 52;
constexpr int kServerError = 128;
constexpr int kFramingError = 129;

std::string NameIn(const std::string& body)
{
    const auto name = body.size() < 4 ? std::string() : body.substr(4, kNameWidth);
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

}  // namespace

Colleague::Colleague(std::string name, AccessAnswer access, const TimeSource& time, TrafficLog& log,
                     ColleagueHost& host)
    : mName(std::move(name)), mAccess(access), mTime(time), mLog(log), mHost(host)
{
}

void Colleague::LogOn()
{
    Send(kLogOn, std::string(kNameWidth, '\0') + RelayField(mName, kNameWidth) + RelayField("OEMClient", kKindWidth) +
                     RelayField(mName, kNameWidth));
}

void Colleague::LogOff()
{
    if (mId != 0)
        Send(kLogOff, RelayNumber(mId));
}

void Colleague::Receive(std::string_view bytes)
{
    mBytes += bytes;
    while (const auto frame = RelayFrame::TakeFrom(mBytes))
        Handle(*frame);
}

void Colleague::Handle(const RelayFrame& frame)
{
    struct Row {
        int type;
        void (Colleague::*handle)(const std::string&);
    };
    static constexpr Row kRows[] = {
        {kEcho, &Colleague::AnswerEcho},
        {kLoggedOn, &Colleague::TakeId},
        {kPiped, &Colleague::TakePipe},
        {kPipeBroken, &Colleague::LosePipe},
        {kChat, &Colleague::AnswerChat},
        {kMessage, &Colleague::TakeMessage},
        {kAccessRequest, &Colleague::AnswerRequest},
        {kServerError, &Colleague::NoteError},
        {kFramingError, &Colleague::NoteError},
    };
    if (const auto* row = std::ranges::find(kRows, frame.type, &Row::type); row != std::end(kRows))
        (this->*row->handle)(frame.body);
}

void Colleague::TakeId(const std::string& body)
{
    mId = ReadRelayNumber(body);
    mLog.Note("logged on as " + mName);
    mHost.Tell("ready relay " + mName);
}

void Colleague::TakePipe(const std::string& body)
{
    const bool isNew = mPartner == 0;
    mPartner = ReadRelayNumber(body);
    mPartnerName = NameIn(body);
    mLog.Note("piped to " + mPartnerName);
    if (isNew)
        Say("Hello " + mPartnerName + ", this is " + mName + ". The vehicle is connected.");
}

void Colleague::LosePipe(const std::string&)
{
    mLog.Note("no longer piped to " + mPartnerName);
    mPartner = 0;
}

void Colleague::TakeMessage(const std::string& body)
{
    mHost.MessageForVehicle(body);
}

void Colleague::AnswerEcho(const std::string& body)
{
    Send(kEchoReply, body);
}

void Colleague::AnswerChat(const std::string& body)
{
    mLog.Note(mPartnerName + " says: " + body);
    Say("You said: " + body.substr(0, body.find('\0')));
}

void Colleague::AnswerRequest(const std::string&)
{
    mLog.Note(mPartnerName + " asks for access");
    if (mAccess == AccessAnswer::Ask)
        mHost.Tell(mPartnerName + " asks for access: grant or deny");
    else
        Answer(mAccess == AccessAnswer::Grant);
}

void Colleague::NoteError(const std::string& body)
{
    mLog.Note("the relay says: " + body);
}

void Colleague::Answer(bool granted)
{
    mLog.Note(granted ? "access granted" : "access denied");
    Send(kAccessReply, (granted ? std::string(1, '\1') : std::string(1, '\0')) + "The answer of " + mName);
}

void Colleague::Say(const std::string& text)
{
    constexpr std::size_t kLongest = 1000;
    Send(kChat, text.substr(0, kLongest));
}

bool Colleague::Control(const std::string& line)
{
    constexpr std::string_view kSay = "say ";
    const bool says = line.starts_with(kSay);
    if (!says && line != "grant" && line != "deny" && line != "break")
        return false;
    if (mPartner == 0)
        throw std::invalid_argument("nobody is piped to us");
    if (says)
        Say(line.substr(kSay.size()));
    else if (line == "break")
        Send(kBreakPipe, RelayNumber(mPartner));
    else
        Answer(line == "grant");
    return true;
}

std::size_t Colleague::Write(std::span<const std::uint8_t> bytes)
{
    if (!mHost.RelayHasRoom())
        return 0;
    for (const auto& item : mScanner.Take(bytes, mTime.Seconds()))
        if (item.kind == Received::Kind::Frame)
            Send(kMessage, {item.bytes.begin(), item.bytes.end()});
    return bytes.size();
}

}  // namespace fenrik
