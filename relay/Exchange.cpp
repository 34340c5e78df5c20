#include "relay/Exchange.h"

#include "pipe/PipeBodies.h"
#include "pipe/PipeRules.h"
#include "relay/RelayText.h"

#include <algorithm>

namespace fenrik {

namespace {

using enum PipeFrameType;

std::string Quoted(std::string_view name)
{
    return '"' + LogText(name) + '"';
}

void SendNotice(User& to, PipeFrameType type, const User& about, std::string_view text)
{
    to.line.Send(type, PipeNotice{about.id, about.name, std::string(text)}.Encode());
}

void SendError(User& to, std::string_view text)
{
    to.line.Send(frameServerError, text);
}

}  // namespace

struct Exchange::Row {
    PipeFrameType type;
    double cost;                                          // of the sender's budget
    void (Exchange::*handle)(User&, const std::string&);  // null: to the partner as it stands
};

const Exchange::Row* Exchange::FindRow(PipeFrameType type)
{
    // What makes the relay write much, or makes it write to everybody, costs the sender more.
    static constexpr Row kRows[] = {
        {frameNetworkMessage, 1, &Exchange::PassMessage},
        {frameChat, 1, nullptr},
        {frameEchoClient, 1, nullptr},
        {frameEchoReply, 1, nullptr},
        {frameEchoServer, 1, &Exchange::Echo},
        {frameAuthenticate, 50, &Exchange::Authenticate},
        {frameLogoff, 1, &Exchange::Logoff},
        {frameUserListRequest, 50, &Exchange::SendUserList},
        {framePipeTo, 50, &Exchange::PipeTo},
        {frameBreakPipe, 50, &Exchange::BreakPipe},
        {frameBussAccessRequest, 10, &Exchange::RequestAccess},
        {frameBussAccessReply, 10, &Exchange::ReplyToAccess},
        {frameServerInfoRequest, 1, &Exchange::SendServerInfo},
    };
    const auto* row = std::ranges::find(kRows, type, &Row::type);
    return row == std::end(kRows) ? nullptr : row;
}

double Exchange::Cost(const PipeFrame& frame)
{
    constexpr std::size_t kBytesOfAUnit = 256;
    const auto* row = FindRow(frame.type);
    return (row ? row->cost : 1) + double(frame.body.size() / kBytesOfAUnit);
}

void Exchange::Handle(User& user, const PipeFrame& frame, double now)
{
    mNow = now;
    if (user.ended)
        return;
    const auto* row = FindRow(frame.type);
    const auto* rule = FindPipeRule(PipeDirection::ToServer, frame.type);
    if (!row || !rule)
        return RefuseFrame(user, "a frame of type " + std::to_string(int(frame.type)) + " is not understood", now);
    if (!rule->Fits(frame.body.size()))
        return RefuseFrame(user, PipeTypeName(frame.type) + " has a wrong length", now);
    if (!user.LoggedOn() && frame.type != frameAuthenticate)
        return TurnAway(user, "You are not logged on.", now);
    if (rule->onlyWhilePiped && !user.partner)
        return Stray(user, frame.type, "without a pipe");
    if (row->handle)
        (this->*row->handle)(user, frame.body);
    else
        user.partner->line.Send(frame.type, frame.body);
}

void Exchange::RefuseFrame(User& user, std::string_view why, double now)
{
    user.line.Send(frameFramingError, why);
    Leave(user, "framing error: " + std::string(why), now);
    user.line.End();
}

void Exchange::TurnAway(User& user, std::string_view why, double now)
{
    SendError(user, why);
    Leave(user, "turned away: " + std::string(why), now);
    user.line.End();
}

void Exchange::Leave(User& user, std::string_view why, double now)
{
    mNow = now;
    if (user.ended)
        return;
    user.ended = true;
    Log(user, why);
    if (!user.LoggedOn())
        return;
    Part(user, "The user has left.");
    mUsers.Remove(user);
}

void Exchange::Close()
{
    // The reason first: a tool whose pipe breaks hangs up at once.
    const auto users = mUsers.All();
    for (auto* user : users)
        SendError(*user, "The server is being shut down.");
    for (auto* user : users)
        if (user->partner)
            SendNotice(*user, framePipeBroken, *user->partner, "The server is being shut down.");
    for (auto* user : users) {
        user->partner = nullptr;
        user->ended = true;
        mUsers.Remove(*user);
        user->line.End();
    }
    mPipes = 0;
}

void Exchange::Authenticate(User& user, const std::string& body)
{
    if (user.LoggedOn())
        return SendError(user, "You are logged on already.");
    if (mUsers.Size() >= std::size_t(mLimits.users))
        return TurnAway(user, "The server is full.", mNow);
    const auto logon = PipeLogon::Decode(body).value();
    mUsers.Add(user);
    user.name = CleanName(logon.userName);
    if (user.name.empty())
        user.name = CleanName(logon.logonID);
    if (user.name.empty())
        user.name = "User " + std::to_string(user.id);
    Log(user, "logged on as " + Quoted(logon.logonID) + " with " + Quoted(logon.kind));
    user.line.Send(frameAuthenticated, PipeWelcome{user.id, "Logged on to the relay as " + user.name}.Encode());
}

void Exchange::Logoff(User& user, const std::string& body)
{
    if (ReadPipeNumber(body) != user.id)
        return Stray(user, frameLogoff, "for another user");
    Leave(user, "logged off", mNow);
    user.line.End();
}

void Exchange::SendUserList(User& user, const std::string&)
{
    user.line.Send(frameUserList, mUsers.ListFor(user));
}

void Exchange::PipeTo(User& user, const std::string& body)
{
    auto* wanted = mUsers.Find(ReadPipeNumber(body));
    if (const auto objection = ObjectionToPipe(user, wanted); !objection.empty()) {
        Log(user, "got no pipe: " + LogText(objection));
        return SendError(user, objection);
    }
    if (user.partner == wanted)
        return SendNotice(user, framePiped, *wanted, "Piped to " + wanted->name);
    Join(user, *wanted);
}

std::string Exchange::ObjectionToPipe(const User& user, const User* wanted) const
{
    if (!wanted)
        return "This user is not logged on.";
    if (wanted == &user)
        return "You can't be piped to yourself.";
    if (user.partner && user.partner != wanted)
        return "You are piped to " + user.partner->name + " already.";
    if (wanted->partner && wanted->partner != &user)
        return wanted->name + " is already piped to another user.";
    return {};
}

void Exchange::Join(User& opener, User& wanted)
{
    opener.partner = &wanted;
    wanted.partner = &opener;
    for (auto* end : {&opener, &wanted})
        end->opener = end->asked = end->granted = end->strayTold = false;
    opener.opener = true;
    ++mPipes;
    mUsers.NoteChange();
    Log(opener, "is piped to user " + std::to_string(wanted.id) + ' ' + Quoted(wanted.name));
    SendNotice(opener, framePiped, wanted, "Piped to " + wanted.name);
    SendNotice(wanted, framePiped, opener, opener.name + " is piped to you");
    Ask(opener);
}

void Exchange::Ask(User& asker)
{
    asker.asked = true;
    if (mConsent != Consent::Ask)
        return Answer(asker, mConsent == Consent::Grant);
    // Without a body in this direction: there is one pipe, so it is clear who asks.
    asker.partner->line.Send(frameBussAccessRequest, {});
}

void Exchange::Answer(User& asker, bool granted)
{
    asker.granted = granted;
    Log(asker, granted ? "is granted access" : "is denied access");
    asker.line.Send(frameBussAccessReply, PipeAccessReply{granted, "The server decides on access."}.Encode());
}

void Exchange::RequestAccess(User& user, const std::string& body)
{
    if (ReadPipeNumber(body) != user.partner->id)
        return Stray(user, frameBussAccessRequest, "for a user that it is not piped to");
    Ask(user);
}

void Exchange::ReplyToAccess(User& user, const std::string& body)
{
    auto& asker = *user.partner;
    if (!asker.asked)
        return Stray(user, frameBussAccessReply, "that nobody asked for");
    if (mConsent == Consent::Deny)
        return Stray(user, frameBussAccessReply, "though the relay denies all access");
    asker.granted = PipeAccessReply::Decode(body).value().granted;
    Log(asker, asker.granted ? "is granted access by its partner" : "is denied access by its partner");
    asker.line.Send(frameBussAccessReply, body);
}

void Exchange::PassMessage(User& user, const std::string& body)
{
    if (!user.MayFeed())
        return Stray(user, frameNetworkMessage, "without access");
    user.partner->line.Send(frameNetworkMessage, body);
}

void Exchange::BreakPipe(User& user, const std::string& body)
{
    // Both ends may hang up at the same time: that is no reason to trouble the user.
    if (!user.partner || ReadPipeNumber(body) != user.partner->id)
        return Stray(user, frameBreakPipe, "for a pipe that it has not");
    const auto& partner = *user.partner;
    Log(user, "broke its pipe to user " + std::to_string(partner.id) + ' ' + Quoted(partner.name));
    SendNotice(user, framePipeBroken, partner, "The pipe is closed.");
    Part(user, "The user has closed the pipe.");
}

void Exchange::Echo(User& user, const std::string& body)
{
    user.line.Send(frameEchoReply, body);
}

void Exchange::SendServerInfo(User& user, const std::string&)
{
    static constexpr const char* kConsent[] = {"granted to all", "granted by the piped user", "denied to all"};
    user.line.Send(frameServerInfo, "fenrik-relay " FENRIK_VERSION "; users: " + std::to_string(mUsers.Size()) +
                                        "; pipes: " + std::to_string(mPipes) + "; access is " +
                                        kConsent[int(mConsent)]);
}

void Exchange::Stray(User& user, PipeFrameType type, std::string_view why)
{
    if (user.strayTold)
        return;
    user.strayTold = true;
    Log(user, "sent " + PipeTypeName(type) + ' ' + std::string(why) + "; dropped, and no more such lines for now");
}

void Exchange::Part(User& user, std::string_view textForPartner)
{
    auto* partner = user.partner;
    if (!partner)
        return;
    SendNotice(*partner, framePipeBroken, user, textForPartner);
    for (auto* end : {&user, partner}) {
        end->partner = nullptr;
        end->strayTold = false;
    }
    --mPipes;
    mUsers.NoteChange();
}

void Exchange::Log(const User& user, std::string_view what)
{
    const auto who = user.LoggedOn() ? "user " + std::to_string(user.id) + ' ' + Quoted(user.name) + " at "
                                     : std::string("client at ");
    mLog.Line(mNow, who + user.address + ' ' + std::string(what));
}

}  // namespace fenrik
