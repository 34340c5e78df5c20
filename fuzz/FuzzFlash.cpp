// A variable flash structure: any bytes, zeros behind them. All widths are walked, and a whole download is run.

#include "model/CNode.h"
#include "model/DownloadProgress.h"
#include "model/VariableFlashRoad.h"
#include "shared/CommandTable.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span bytes(data, size);
    const auto at = [bytes](int address) -> unsigned {
        return std::size_t(address) < bytes.size() ? bytes[std::size_t(address)] : 0u;
    };
    int reads = 0;
    const fenrik::VariableFlash flash([&](int address) {
        ++reads;
        if (address < 0 || address >= fenrik::VariableFlash::kSize)
            std::abort();
        return std::uint16_t(at(address + 1) << 8 | at(address));
    });

    constexpr std::array path{3, 1, 4};
    for (const int width : {1, 2, 4}) {
        reads = 0;
        const int address = flash.Walk({width, 1 + width, width != 2}, path);
        if (reads > 40 || address < fenrik::VariableFlash::kNotThere || address >= fenrik::VariableFlash::kSize)
            std::abort();
    }

    static const auto commands = std::make_unique<fenrik::CommandTable>();
    fenrik::CNode node;
    node.setTypeID(6);
    fenrik::DownloadProgress progress(nullptr);
    try {
        fenrik::VariableFlashRoad(node, flash, *commands, progress).Run();
    } catch (const fenrik::DownloadEnded&) {
        // A broken structure ends this way.
    }
    return 0;
}
