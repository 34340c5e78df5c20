#pragma once

#include "simulator/FileHandle.h"
#include "simulator/Options.h"
#include "simulator/PortLink.h"
#include "simulator/Simulation.h"
#include "simulator/Terminal.h"
#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <fstream>
#include <memory>
#include <string>

namespace fenrik {

/// The running program: waits for bytes, room, users of the port, control lines, signals and the time, and lets the
/// simulation work. While the terminal is unplugged the simulation goes on and nobody hears it.
class Program final : public SimulationHost, private SimulatorLine {
public:
    /// Throws std::runtime_error or std::system_error if a file, the terminal or its link can't be had. `scenario` is
    /// used during construction only.
    Program(const Options& options, const Scenario& scenario);

    /// Runs until it is told to end.
    void Run();

    void Unplug() override;
    void Plug() override;
    void Quit() override { mRunning = false; }

private:
    std::size_t Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] bool Heard() const override { return mTerminal && mTerminal->Heard(); }

    void CatchSignals();
    void OpenLog();
    void Wait();
    [[nodiscard]] int WaitMilliseconds() const;
    void NoteUsers();
    void ReadTerminal();
    void ReadControl();
    void Control(const std::string& line);

    Options mOptions;
    std::vector<NodeSetup> mNodes;
    SteadyTime mTime;
    std::ofstream mLogFile;
    TrafficLog mLog;
    Simulation mSimulation;
    FileHandle mSignals;
    std::unique_ptr<Terminal> mTerminal;
    std::unique_ptr<PortLink> mLink;
    bool mControlOpen;
    std::string mControlText;  // of an unfinished line
    bool mRunning = true;
};

}  // namespace fenrik
