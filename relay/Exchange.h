#pragma once

#include "relay/RelayLimits.h"
#include "relay/RelayLog.h"
#include "relay/UserTable.h"

namespace fenrik {

/// What the relay does with the frames of its clients: logs users on, joins two of them to a pipe, passes on what one
/// end sends to the other, and nothing between users that share no pipe. Knows no socket.
///
/// The user that asked for a pipe may watch at once, and send to the network at the other end once access is granted;
/// what it sends before is dropped. A frame that breaks the rules of its type ends its sender with a frameFramingError.
class Exchange {
public:
    /// `log` outlives the exchange.
    Exchange(const RelayLimits& limits, Consent consent, RelayLog& log) : mLimits(limits), mConsent(consent), mLog(log)
    {
    }

    /// Acts on a frame of `user`, unless it has ended.
    void Handle(User& user, const PipeFrame& frame, double now);

    /// What handling `frame` takes from the sender's budget; 1 for a message of the network.
    [[nodiscard]] static double Cost(const PipeFrame& frame);

    /// The stream of `user` holds no frame. Tells it so and ends it.
    void RefuseFrame(User& user, std::string_view why, double now);

    /// Tells `user` why, and ends it.
    void TurnAway(User& user, std::string_view why, double now);

    /// `user` is gone: its pipe breaks and the others hear of it. Must be called before a user dies.
    void Leave(User& user, std::string_view why, double now);

    /// Tells all users that the relay ends, breaks their pipes and ends them.
    void Close();

    [[nodiscard]] UserTable& Users() { return mUsers; }
    [[nodiscard]] const UserTable& Users() const { return mUsers; }
    [[nodiscard]] std::size_t Pipes() const { return mPipes; }

private:
    struct Row;
    static const Row* FindRow(PipeFrameType type);

    void Authenticate(User& user, const std::string& body);
    void Logoff(User& user, const std::string& body);
    void SendUserList(User& user, const std::string& body);
    void PipeTo(User& user, const std::string& body);
    void BreakPipe(User& user, const std::string& body);
    void Echo(User& user, const std::string& body);
    void SendServerInfo(User& user, const std::string& body);
    void RequestAccess(User& user, const std::string& body);
    void ReplyToAccess(User& user, const std::string& body);
    void PassMessage(User& user, const std::string& body);
    void Stray(User& user, PipeFrameType type, std::string_view why);

    [[nodiscard]] std::string ObjectionToPipe(const User& user, const User* wanted) const;
    void Join(User& opener, User& wanted);
    void Ask(User& asker);
    void Answer(User& asker, bool granted);
    void Part(User& user, std::string_view textForPartner);
    void Log(const User& user, std::string_view what);

    RelayLimits mLimits;
    Consent mConsent;
    RelayLog& mLog;
    UserTable mUsers;
    std::size_t mPipes = 0;
    double mNow = 0;  // of the call that is being handled
};

}  // namespace fenrik
