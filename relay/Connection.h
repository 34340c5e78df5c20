#pragma once

#include "relay/FrameIntake.h"
#include "relay/Handle.h"

#include <string>
#include <vector>

namespace fenrik {

/// The socket of one client, the frames that come from it and those that wait to leave.
///
/// What is sent only joins the queue, and a connection to which anything happens joins the list `touched` that it was
/// given; the server writes at the end of its turn, so that frames of the same turn leave together. A connection that
/// ended, or whose client reads too slowly, stays an object until the server takes it away.
class Connection final : private UserLine {
public:
    /// `limits` and `touched` outlive the connection.
    Connection(Handle socket, std::string address, std::string network, const RelayLimits& limits,
               std::vector<Connection*>& touched, double now);

    [[nodiscard]] int Socket() const { return mSocket.Get(); }
    [[nodiscard]] const std::string& Network() const { return mNetwork; }
    [[nodiscard]] User& GetUser() { return mUser; }

    /// Takes in what there is and has `exchange` handle it.
    void Receive(Exchange& exchange, double now);

    /// Has `exchange` handle what had to wait.
    void GoOn(Exchange& exchange, double now);

    /// Writes as much as the socket takes.
    void Flush(double now);

    /// What the passing of time does to it.
    void Tick(Exchange& exchange, double now);

    [[nodiscard]] bool WantsToRead() const;
    [[nodiscard]] bool WantsToWrite() const { return !mGone && Unsent() > 0; }

    /// True while Tick is to be called every now and then.
    [[nodiscard]] bool Timed() const { return !mUser.LoggedOn() || Unsent() > 0 || mIntake.Held() || mEnding; }

    /// True if the socket is of no more use, or not worth keeping. WhyGone tells the log.
    [[nodiscard]] bool Gone() const { return mGone; }
    [[nodiscard]] const char* WhyGone() const { return mWhyGone; }

    /// The events that the server last asked the system to report.
    unsigned watched = 0;

    /// Takes it off the list of the touched.
    void Untouch() { mTouched = false; }

private:
    static constexpr std::size_t kBacklog = 65536;  // unsent bytes from which its own requests wait

    void Send(PipeFrameType type, std::string_view body) override;
    void End() override;
    [[nodiscard]] bool Backlogged() const override { return Unsent() > kBacklog; }

    [[nodiscard]] std::size_t Unsent() const { return mOut.size() - mSent; }
    [[nodiscard]] bool Write();
    void Touch();
    void Lose(const char* why);
    void Farewell(double now);

    Handle mSocket;
    std::string mNetwork;
    const RelayLimits& mLimits;
    std::vector<Connection*>& mTouchedList;
    User mUser;
    FrameIntake mIntake;
    std::string mOut;
    std::size_t mSent = 0;  // bytes of mOut that have left
    double mSince;          // when it was made
    double mLastProgress;   // when the client last took something, or something began to wait for it
    bool mBegins = false;   // to wait: nothing did before
    double mEndsBy = 0;     // set with the shutdown of our side
    bool mTouched = false;
    bool mEnding = false;    // nothing more is sent; what waits still leaves
    bool mShutDown = false;  // our side is closed; the client's is awaited
    bool mGone = false;
    const char* mWhyGone = "";
};

}  // namespace fenrik
