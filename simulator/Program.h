#pragma once

#include "simulator/DialIn.h"
#include "simulator/FileHandle.h"
#include "simulator/Options.h"
#include "simulator/PortLink.h"
#include "simulator/RelaySocket.h"
#include "simulator/Simulation.h"
#include "simulator/Terminal.h"
#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <fstream>
#include <memory>
#include <poll.h>
#include <span>
#include <string>

namespace fenrik {

/// The running program: waits for bytes, room, users of the port, control lines, signals and the time, and lets the
/// simulation work. While the terminal is unplugged the simulation goes on and nobody hears it. In place of a terminal
/// there can be a relay.
class Program final : public SimulationHost, private SimulatorLine, public ColleagueHost, private DialInHost {
public:
    /// Throws std::runtime_error or std::system_error if a file, the terminal or its link can't be had. `scenario` is
    /// used during construction only.
    Program(const Options& options, const Scenario& scenario);

    /// Runs until it is told to end.
    void Run();

    // SimulationHost
    void Unplug() override;
    void Plug() override;
    void Quit() override { mRunning = false; }
    void OrderModem(const ModemOrder& order) override;

private:
    // SimulatorLine of the scenario's network
    std::size_t Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] bool Heard() const override { return Line() && Line()->Heard(); }

    // ColleagueHost
    void SendToRelay(std::string_view bytes) override { mRelay->Send(bytes); }
    [[nodiscard]] bool RelayHasRoom() const override { return mRelay->HasRoom(); }
    void MessageForVehicle(std::string_view bytes) override;
    void Tell(const std::string& line) override;

    // DialInHost
    std::size_t WriteToTerminal(std::span<const std::uint8_t> bytes) override;
    void ByteForVehicle(std::uint8_t byte) override { mSimulation->Receive({&byte, 1}); }

    [[nodiscard]] std::unique_ptr<Simulated> MakeNetwork(const Scenario& scenario);
    [[nodiscard]] const SimulatorLine* Line() const;
    void CatchSignals();
    void OpenLog();
    void Begin();
    void Wait();
    void HandleEvents(std::span<const pollfd> handles);
    [[nodiscard]] int WaitMilliseconds() const;
    void NoteUsers();
    void ReadTerminal();
    void ReadRelay();
    void ReadControl();
    void Control(const std::string& line);

    Options mOptions;
    std::vector<NodeSetup> mNodes;
    SteadyTime mTime;
    std::ofstream mLogFile;
    TrafficLog mLog;
    std::unique_ptr<Simulated> mSimulation;
    FileHandle mSignals;
    std::unique_ptr<Terminal> mTerminal;
    std::unique_ptr<PortLink> mLink;
    std::unique_ptr<RelaySocket> mRelay;
    std::unique_ptr<Colleague> mColleague;
    std::unique_ptr<DialIn> mDialIn;
    bool mControlOpen;
    std::string mControlText;  // of an unfinished line
    bool mRunning = true;
};

}  // namespace fenrik
