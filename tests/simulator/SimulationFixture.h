#pragma once

#include "simulator/Fixtures.h"
#include "simulator/TrafficLog.h"

#include <gmock/gmock.h>
#include <memory>
#include <sstream>

namespace fenrik {

/// A simulation on a line and in a time of the test's own.
class SimulationTest : public testing::Test {
protected:
    void Begin(const std::string& statements, bool isPaced = false)
    {
        std::istringstream in(statements);
        std::vector<ScenarioProblem> problems;
        const auto scenario = Scenario::Parse(in, problems);
        ASSERT_THAT(problems, testing::IsEmpty());
        simulation = std::make_unique<Simulation>(scenario, Simulation::Settings{isPaced, 1}, time, line, log, host);
        simulation->Step();
    }
    /// Goes on to `until`, from one moment at which something is due to the next.
    void RunTo(double until)
    {
        for (double due = simulation->NextDue(); due <= until; due = simulation->NextDue()) {
            time.now = std::max(time.now, due);
            simulation->Step();
        }
        time.now = until;
    }
    void Receive(const Frame& frame) { simulation->Receive(ToBytes(frame)); }
    void Control(const char* statement)
    {
        simulation->Carry(*ParseAction(statement, Vehicle::DefaultNodes()));
        simulation->Step();
    }

    FakeTime time;
    LineRecorder line;
    std::ostringstream text;
    TrafficLog log{time, &text};
    HostRecorder host;
    std::unique_ptr<Simulation> simulation;
};

}  // namespace fenrik
