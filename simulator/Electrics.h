#pragma once

#include <optional>

namespace fenrik {

/// The supply of the vehicle: what the battery shows, and which loads the nodes shed when it sags.
class Electrics {
public:
    static constexpr double kRestVolts = 12.6;
    static constexpr double kCrankingVolts = 9.6;
    static constexpr double kChargingVolts = 13.9;
    static constexpr int kMaxShedLevel = 3;

    void SetCranking(bool on) { mCranking = on; }
    void SetRunning(bool on) { mRunning = on; }

    /// Holds the voltage at `volts`, or lets it follow the engine again.
    void Force(std::optional<double> volts) { mForced = volts; }

    /// Lets `seconds` pass. Voltage and shed level follow within a second or two.
    void Advance(double seconds);

    [[nodiscard]] double Volts() const { return mVolts; }
    [[nodiscard]] bool Running() const { return mRunning; }

    /// 0 (everything supplied) to kMaxShedLevel. A level is left only when the voltage has recovered by some margin.
    [[nodiscard]] int ShedLevel() const { return mShedLevel; }

private:
    [[nodiscard]] double Target() const;

    bool mCranking = false;
    bool mRunning = false;
    std::optional<double> mForced;
    double mVolts = kRestVolts;
    int mShedLevel = 0;
};

}  // namespace fenrik
