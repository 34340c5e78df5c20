#pragma once

#include "diagnostics/LoadShedTable.h"

#include <cstdint>

namespace fenrik {

class MiscFace;

/// The load-shed levels that the nodes have reported, and their rows on the panel.
class Loadshed {
public:
    /// `panel` outlives it.
    explicit Loadshed(MiscFace& panel) : mPanel(panel) {}

    /// Stores what a message reports, the node in the high byte of `data` and its level in the low one, and draws the
    /// rows of nodes 1 to `nodesInSystem`. A node number that no network has (0, or above 32) is ignored.
    void UpdateLoadShed(std::int32_t data, int nodesInSystem);

    void ShowLoadShed(int nodesInSystem) const;

    /// Nothing is known of any node; nothing is drawn.
    void ResetLoadShedArray() { mTable = {}; }

    [[nodiscard]] const LoadShedTable& Table() const { return mTable; }

private:
    MiscFace& mPanel;
    LoadShedTable mTable;
};

}  // namespace fenrik
