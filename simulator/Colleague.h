#pragma once

#include "simulator/FrameScanner.h"
#include "simulator/RelayFrame.h"
#include "simulator/SendQueue.h"

#include <string>

namespace fenrik {

class TrafficLog;
class TimeSource;

/// What the colleague does when the other user asks for access to the vehicle.
enum class AccessAnswer { Grant, Deny, Ask };

/// The way from the colleague to the relay, and to whoever runs the program.
class ColleagueHost {
public:
    virtual ~ColleagueHost() = default;

    /// Bytes for the relay; all of them are taken.
    virtual void SendToRelay(std::string_view bytes) = 0;
    [[nodiscard]] virtual bool RelayHasRoom() const = 0;

    /// A network message from the other user.
    virtual void MessageForVehicle(std::string_view bytes) = 0;

    /// A line for the person at the terminal.
    virtual void Tell(const std::string& line) = 0;
};

/// A user of the relay whose tool is attached to the simulated vehicle. While somebody is piped to it the vehicle's
/// frames go there; the other user's messages come to the vehicle. It answers echoes and chat, and requests for access
/// as it was told. As a tool would, it passes frames on and no noise.
class Colleague final : public SimulatorLine {
public:
    /// The references outlive the colleague.
    Colleague(std::string name, AccessAnswer access, const TimeSource& time, TrafficLog& log, ColleagueHost& host);

    void LogOn();
    void LogOff();

    /// Bytes from the relay. Throws std::runtime_error if they are no frames.
    void Receive(std::string_view bytes);

    /// "grant", "deny", "break", "say TEXT". False if `line` is none of them; throws std::invalid_argument if nobody is
    /// there whom it could be about.
    bool Control(const std::string& line);

    std::size_t Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] bool Heard() const override { return mPartner != 0; }

private:
    void Handle(const RelayFrame& frame);
    void TakeId(const std::string& body);
    void TakePipe(const std::string& body);
    void LosePipe(const std::string& body);
    void TakeMessage(const std::string& body);
    void AnswerEcho(const std::string& body);
    void AnswerChat(const std::string& body);
    void AnswerRequest(const std::string& body);
    void NoteError(const std::string& body);

    void Answer(bool granted);
    void Say(const std::string& text);
    void Send(int type, const std::string& body) { mHost.SendToRelay(RelayFrame{type, body}.Encode()); }

    std::string mName;
    AccessAnswer mAccess;
    const TimeSource& mTime;
    TrafficLog& mLog;
    ColleagueHost& mHost;
    FrameScanner mScanner;  // of what the vehicle sends
    std::string mBytes;     // of an unfinished frame of the relay
    int mId = 0;
    int mPartner = 0;  // 0: no pipe
    std::string mPartnerName;
};

}  // namespace fenrik
