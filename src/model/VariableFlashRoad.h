#pragma once

#include "model/VariableFlash.h"

#include <span>

namespace fenrik {

class CNode;
class CommandTable;
class DownloadProgress;

/// Reads the configuration of a Comfort Module (type 6) out of its variable flash structure.
///
///   path       content
///   0          bytes 12-13, 14-15 and 16-17 of the entry: commands of the inputs 1 to 3
///   5, 0       one byte for each output, at the address itself: load-shed voltage in volts
///   1, i - 1   behind the entry's own two bytes: relationship of output i
class VariableFlashRoad {
public:
    VariableFlashRoad(CNode& node, const VariableFlash& flash, const CommandTable& commands, DownloadProgress& progress)
        : mNode(node), mFlash(flash), mCommands(commands), mProgress(progress)
    {
    }

    /// Throws DownloadEnded.
    void Run();

private:
    [[nodiscard]] int Walk(std::span<const int> path) const;
    void ReadInputs();
    void StoreInput(int number, int command);
    void ReadOutputs();
    void ReadRelationship(int number);

    CNode& mNode;
    const VariableFlash& mFlash;
    const CommandTable& mCommands;
    DownloadProgress& mProgress;
};

}  // namespace fenrik
