#pragma once

#include <QString>

namespace fenrik {

class EventPump;
class MModem;
struct RunState;
struct Settings;

/// Why a dial failed, as numbers of Error.
namespace DialError {
inline constexpr int kOwnNumbers = -2147221504;  ///< where the numbers begin that a program gives its own errors
inline constexpr int kNoNumber = kOwnNumbers + 1000;
inline constexpr int kNoModem = kOwnNumbers + 1001;
inline constexpr int kNotConnected = kOwnNumbers + 1002;  ///< the description is the modem's reply
inline constexpr int kNoPassThrough = kOwnNumbers + 1003;
}  // namespace DialError

/// What shows how a dial goes on. Called inside Dial.
class DialView {
public:
    virtual ~DialView() = default;
    virtual void ShowStatus(const QString& text) = 0;
};

/// The way from a phone number to a vehicle's module that passes the network through.
class DialSequence {
public:
    /// All references outlive the object.
    DialSequence(MModem& modem, EventPump& pump, const Settings& settings, RunState& run, DialView& view);

    /// True if the module passes everything through now; false if the dial was canceled or the program ends. The port
    /// stays open in any case. Throws Error: a number of DialError, kPortNotFound, and others of the port.
    [[nodiscard]] bool Dial(const QString& phoneNumber);

    /// From inside Dial: it returns without waiting any further.
    void Cancel();

private:
    [[nodiscard]] bool Ended() const;
    [[nodiscard]] bool FindModem();
    [[nodiscard]] bool OpenLine();
    [[nodiscard]] bool Initialize();
    [[nodiscard]] bool Call(const QString& digits);
    [[nodiscard]] bool AskVersion();
    [[nodiscard]] bool EnterPassThrough();

    MModem& mModem;
    EventPump& mPump;
    const Settings& mSettings;
    RunState& mRun;
    DialView& mView;
    bool mCanceled = false;
};

/// Each word with a capital first letter and the rest small.
[[nodiscard]] QString ProperCase(const QString& text);

}  // namespace fenrik
