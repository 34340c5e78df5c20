#include "simulator/LegacyTraffic.h"

#include "simulator/LegacyMessages.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

constexpr double kSwitchInterval = 0.8;  // seconds
constexpr double kAliveInterval = 3;
constexpr int kLargestStep = 3;

}  // namespace

LegacyTraffic::LegacyTraffic(unsigned seed) : mRandom(seed), mOn(std::size(kLegacySwitches))
{
    for (const LegacyGauge& gauge : kLegacyGauges) {
        mValues.push_back((gauge.least + gauge.most) / 2);
        mNextValue.push_back(gauge.interval);
    }
}

std::vector<LegacyTraffic::Speech> LegacyTraffic::Due(double now)
{
    std::vector<Speech> due;
    for (; mNextAlive <= now; mNextAlive += kAliveInterval)
        for (int node = 1; node <= kLegacyNodes; ++node)
            due.push_back({node, {kLegacyAlive.number}});
    for (; mNextSwitch <= now; mNextSwitch += kSwitchInterval)
        due.push_back(NextSwitch());
    for (std::size_t i = 0; i < std::size(kLegacyGauges); ++i)
        for (; mNextValue[i] <= now; mNextValue[i] += kLegacyGauges[i].interval)
            due.push_back(Read(i));
    return due;
}

LegacyTraffic::Speech LegacyTraffic::NextSwitch()
{
    const LegacySwitch& item = kLegacySwitches[mSwitch];
    const bool on = mOn[mSwitch] = !mOn[mSwitch];
    mSwitch = (mSwitch + 1) % std::size(kLegacySwitches);
    return {item.node, {on ? item.on.number : item.off.number}};
}

LegacyTraffic::Speech LegacyTraffic::Read(std::size_t number)
{
    const LegacyGauge& gauge = kLegacyGauges[number];
    int value = mValues[number] + std::uniform_int_distribution<int>(-kLargestStep, kLargestStep)(mRandom);
    value = std::clamp<int>(value, gauge.least, gauge.most);
    mValues[number] = value;
    // A value that looks like a token would be taken for one.
    const bool looksLikeToken = value > kLegacyTokenBase && value <= kLegacyTokenBase + kLegacyNodes;
    return {gauge.node, {gauge.message.number, std::uint8_t(looksLikeToken ? kLegacyTokenBase : value)}};
}

}  // namespace fenrik
