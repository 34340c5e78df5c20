#pragma once

#include "simulator/HayesModem.h"
#include "simulator/SendQueue.h"
#include "simulator/Simulation.h"

namespace fenrik {

/// The way from the modem to its terminal and to the vehicle of the scenario.
class DialInHost {
public:
    virtual ~DialInHost() = default;
    virtual std::size_t WriteToTerminal(std::span<const std::uint8_t> bytes) = 0;
    virtual void ByteForVehicle(std::uint8_t byte) = 0;
};

/// A modem and the vehicles that can be reached by it: the one of the scenario, whose line this is, and a coach that
/// stands somewhere else. While no call goes to a vehicle nobody hears it.
class DialIn final : public SimulatorLine, private HayesModemHost, private SimulationHost {
public:
    /// The references outlive the object.
    DialIn(const Simulation::Settings& settings, const TimeSource& time, TrafficLog& log, DialInHost& host);

    [[nodiscard]] HayesModem& Modem() { return mModem; }

    void Step();
    [[nodiscard]] double NextDue() const;

    // SimulatorLine, of the scenario's vehicle
    std::size_t Write(std::span<const std::uint8_t> bytes) override { return mModem.TakeFromVehicle(bytes); }
    [[nodiscard]] bool Heard() const override { return mModem.Carries(PhoneNumber::Answer::Vehicle); }

private:
    /// The line of the coach.
    class CoachLine final : public SimulatorLine {
    public:
        explicit CoachLine(HayesModem& modem) : mModem(modem) {}
        std::size_t Write(std::span<const std::uint8_t> bytes) override { return mModem.TakeFromVehicle(bytes); }
        [[nodiscard]] bool Heard() const override { return mModem.Carries(PhoneNumber::Answer::Coach); }

    private:
        HayesModem& mModem;
    };

    std::size_t WriteToComputer(std::span<const std::uint8_t> bytes) override { return mHost.WriteToTerminal(bytes); }
    void ToVehicle(PhoneNumber::Answer vehicle, std::uint8_t byte) override;

    // SimulationHost of the coach, whose scenario asks for none of this
    void Unplug() override {}
    void Plug() override {}
    void Quit() override {}
    void OrderModem(const ModemOrder&) override {}

    DialInHost& mHost;
    HayesModem mModem;
    CoachLine mCoachLine;
    Simulation mCoach;
};

}  // namespace fenrik
