#pragma once

#include "simulator/Vehicle.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fenrik {

/// A little tool: reads the configuration of a node as the line gives it, by offsets of its own, and says what it read
/// in the words of the simulator's description (without "node <n> ").
class RoadReader {
public:
    using Bytes = std::vector<int>;
    using Lines = std::set<std::string>;

    /// Mounts `node`. `vehicle` outlives the reader.
    RoadReader(Vehicle& vehicle, int node);

    [[nodiscard]] Lines ReadQueries(int inputs, int outputs);
    [[nodiscard]] Lines ReadMemory(int type, int inputs, int outputs);
    [[nodiscard]] Lines ReadFlash();
    [[nodiscard]] Lines ReadHeaderArray();
    [[nodiscard]] Lines ReadHeaderBytes();
    [[nodiscard]] Lines ReadVersions();

    /// The reply to a query, its page selected first if there is one; nothing if it was refused or not answered.
    [[nodiscard]] std::optional<Bytes> Query(int data, int page = 0);

    /// Memory is read from `bytes` in place of the line from now on.
    void UseImage(const std::vector<std::uint8_t>& bytes);

    /// The element that `path` leads to in variable flash, or -1.
    [[nodiscard]] int Walk(const std::vector<int>& path);
    [[nodiscard]] int FlashByte(int address);

private:
    struct Map;

    [[nodiscard]] std::optional<Frame> Ask(const Frame& question);
    [[nodiscard]] int Memory(int position);
    [[nodiscard]] int FlashWord(int address);
    [[nodiscard]] std::string Text(int reference);
    [[nodiscard]] std::string Stored(int position);
    void QueryInput(int number);
    void QueryOutput(int number);
    void StoredInput(const Map& map, int i);  // `i` from 0
    void StoredOutput(const Map& map, int i);
    [[nodiscard]] double StoredDelay(int position);
    void Put(const std::string& field, const std::string& value) { mLines.insert(mBeginning + field + " " + value); }
    void PutNumber(const std::string& field, double value);
    void PutName(const std::string& name, const std::string& otherwise);
    void PutRelationship(const std::string& bytes);

    Vehicle& mVehicle;
    std::function<int(int)> mMemory;
    Lines mLines;
    std::string mBeginning;
};

}  // namespace fenrik
