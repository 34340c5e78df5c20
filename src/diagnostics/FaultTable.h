#pragma once

#include "platform/SubscriptOutOfRange.h"

#include <QString>

#include <array>

namespace fenrik {

/// `FaultText`: the last fault reported of each output, by the numbers of node and output, both from 1 to 32. It knows
/// nothing of mounts, so that a fault of a node that is not mounted is there when the node is looked at.
class FaultTable {
public:
    static constexpr int kNodes = 32;
    static constexpr int kOutputs = 32;

    /// Empty while no fault was reported. Throws Error 9 outside the table; so does Set.
    [[nodiscard]] const QString& At(int node, int output) const { return mTexts[Slot(node, output)]; }
    void Set(int node, int output, const QString& text) { mTexts[Slot(node, output)] = text; }

    void Clear() { mTexts.fill(QString()); }

private:
    static std::size_t Slot(int node, int output)
    {
        if (node < 1 || node > kNodes || output < 1 || output > kOutputs)
            throw SubscriptOutOfRange();
        return std::size_t((node - 1) * kOutputs + output - 1);
    }

    std::array<QString, std::size_t(kNodes* kOutputs)> mTexts;
};

}  // namespace fenrik
