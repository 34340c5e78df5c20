#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace fenrik {

/// What the nodes of the older network say by themselves: switches that go on and off in turn, measured values that
/// drift, and a sign of life.
class LegacyTraffic {
public:
    /// The bytes that a node is to send when it holds the token next.
    struct Speech {
        int node;
        std::vector<std::uint8_t> bytes;
    };

    explicit LegacyTraffic(unsigned seed);

    /// What has come up by `now` (seconds), in order of time.
    [[nodiscard]] std::vector<Speech> Due(double now);

private:
    [[nodiscard]] Speech NextSwitch();
    [[nodiscard]] Speech Read(std::size_t gauge);

    std::mt19937 mRandom;
    double mNextSwitch = 1;
    double mNextAlive = 0.5;
    std::size_t mSwitch = 0;
    std::vector<bool> mOn;
    std::vector<int> mValues;        // of the gauges
    std::vector<double> mNextValue;  // when each is reported
};

}  // namespace fenrik
