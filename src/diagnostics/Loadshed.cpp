#include "diagnostics/Loadshed.h"

#include "diagnostics/MiscFace.h"

namespace fenrik {

void Loadshed::UpdateLoadShed(std::int32_t data, int nodesInSystem)
{
    const std::size_t node = data >> 8 & 0xFF;
    if (node < 1 || node > mTable.size())
        return;
    mTable[node - 1] = {std::int16_t(data & 0xFF), true};
    ShowLoadShed(nodesInSystem);
}

void Loadshed::ShowLoadShed(int nodesInSystem) const
{
    mPanel.ShowLoadShed(mTable, nodesInSystem);
}

}  // namespace fenrik
