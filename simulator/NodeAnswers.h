#pragma once

#include "link/Frame.h"
#include "simulator/MemoryImage.h"
#include "simulator/NodeFaults.h"
#include "simulator/VariableFlashImage.h"

#include <optional>
#include <vector>

namespace fenrik {

/// What a mounted node answers about its configuration: memory reads (923), versions (937), and, according to its
/// configuration, variable flash reads or queries (940).
///
/// An array travels as an announcing 903 (state: granted, extended: words high byte first, data: number of bytes) and
/// frames of 950 with two bytes each, the first one low. Their state is on, by which they are told from the answer to
/// a variable flash read.
///
/// A page select (940, extended) gives the high byte of the next query's reference. It holds until a query has been
/// answered in full.
class NodeAnswers {
public:
    explicit NodeAnswers(NodeConfig config);

    [[nodiscard]] const NodeConfig& Config() const { return mConfig; }

    [[nodiscard]] std::vector<Frame> AnswerMemoryRead(const Frame& question) const;
    [[nodiscard]] std::vector<Frame> AnswerVersion(const Frame& question) const;
    [[nodiscard]] std::vector<Frame> AnswerQuery(const Frame& question, const NodeFaults& faults);

    /// All frames of the last answer to a query have reached the line: its page is done with.
    void QueryArrived();

    /// The page is forgotten.
    void Restart();

private:
    [[nodiscard]] std::vector<Frame> AnswerArray(std::uint16_t data, const NodeFaults& faults);

    NodeConfig mConfig;
    MemoryImage mMemory;
    std::optional<VariableFlashImage> mFlash;
    std::uint8_t mPage = 0;
    bool mAnsweredInFull = false;
};

}  // namespace fenrik
