#pragma once

#include "simulator/ModemModule.h"
#include "simulator/ModemOrder.h"
#include "simulator/PhoneBook.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <span>
#include <string>

namespace fenrik {

class TimeSource;
class TrafficLog;

/// Where the modem's bytes go.
class HayesModemHost {
public:
    virtual ~HayesModemHost() = default;

    /// To the computer. Takes as many as there is room for and returns their number.
    virtual std::size_t WriteToComputer(std::span<const std::uint8_t> bytes) = 0;

    /// Into the network of the vehicle that was called.
    virtual void ToVehicle(PhoneNumber::Answer vehicle, std::uint8_t byte) = 0;
};

/// A modem by the computer that is told by AT commands, with the telephone network and the called vehicle's module
/// behind it. Like a real one it echoes, gives up a call that is being set up when it hears any byte, comes back from
/// a call to commands by "+++" between two pauses, and hangs up when the computer closes the port.
class HayesModem final : private ModuleHost {
public:
    static constexpr double kGuardTime = 0.9;  ///< seconds; less than the full one, so that nobody's clock matters
    static constexpr double kNever = std::numeric_limits<double>::infinity();
    static constexpr char kName[] = "Fenrik Simulated Modem 56K";

    HayesModem(const TimeSource& time, TrafficLog& log, HayesModemHost& host);

    /// Bytes from the computer.
    void Receive(std::span<const std::uint8_t> bytes);

    /// Does what is due by now.
    void Step();
    [[nodiscard]] double NextDue() const;

    /// True if Step is also to be called when the computer's line has room again.
    [[nodiscard]] bool Blocked() const { return mBlocked; }

    /// The computer has closed the port.
    void Abandon();

    /// True while the network of that vehicle is passed through.
    [[nodiscard]] bool Carries(PhoneNumber::Answer vehicle) const;

    /// Bytes of the network of the vehicle that was called; none or all are taken.
    [[nodiscard]] std::size_t TakeFromVehicle(std::span<const std::uint8_t> bytes);

    void Obey(const ModemOrder& order);

private:
    enum class State { Command, Dialing, Online, Escaped };
    struct Said {
        double due;
        std::string bytes;
    };

    // ModuleHost
    void ToCaller(const std::string& bytes) override { Say(bytes, 0); }
    void ToNetwork(std::uint8_t byte) override { mHost.ToVehicle(mCalled->answer, byte); }
    void ModuleHangsUp() override { LoseCarrier(); }
    [[nodiscard]] bool CallLasts(char command) override;

    void HearCommand(std::uint8_t byte);
    void HearOnline(std::uint8_t byte);
    void Execute(const std::string& line);
    [[nodiscard]] std::optional<std::string> Run(std::string_view commands);
    [[nodiscard]] bool Set(char command, const std::string& number);
    [[nodiscard]] std::string GoOnline();
    void Dial(const std::string& digits);
    void FinishDial();
    void Connect();
    void HangUp();
    void LoseCarrier();
    void Reset();

    void Answer(const std::string& result);
    void Say(const std::string& bytes, double delay);
    void Flush();

    const TimeSource& mTime;
    TrafficLog& mLog;
    HayesModemHost& mHost;
    ModemModule mModule;

    State mState = State::Command;
    std::string mLine;
    const PhoneNumber* mCalled = nullptr;
    double mDialDone = kNever;
    int mPluses = 0;
    double mLastHeard = -kNever;

    std::deque<Said> mSaid;
    std::string mOut;
    bool mBlocked = false;

    bool mEcho = true;
    bool mWords = true;  // or result codes in digits
    bool mSilent = false;
    bool mGarble = false;
    bool mLong = false;
    bool mNoDialTone = false;
    double mLate = 0;
    double mDialTime = 2;
    std::optional<ModemOrder::Step> mHangUpAt;
};

}  // namespace fenrik
