#pragma once

#include "link/Frame.h"
#include "simulator/NodeFaults.h"
#include "simulator/NodeTypes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fenrik {

/// How a node of the simulated vehicle is set up.
struct NodeSetup {
    static constexpr int kMaxNumber = 32;
    static constexpr int kAnonymous = 12345;  ///< stands for the number that was pinged

    int number = 1;  ///< 1 to 32
    int type = 0;    ///< a number that FindNodeType knows
    std::string name;
    bool pushes = false;         ///< sends its state words by itself once it was asked
    bool anonymousPing = false;  ///< answers a ping with 12345 in place of its number
    bool oldTypeQuery = false;   ///< knows only the older questions for its type
    bool memoryOnly = false;     ///< answers no query of command 940, only memory reads
    bool plainFlash = false;     ///< of type 6: answers queries in place of variable flash reads
    bool early = false;          ///< of type 2: has program 1.2, which is forced in tens of percents
    double lateSeconds = 0;      ///< announces itself this long after the others
};

/// One node: its inputs and outputs as the bus sees them, and what it counts.
class SimNode {
public:
    explicit SimNode(NodeSetup setup);

    [[nodiscard]] const NodeSetup& Setup() const { return mSetup; }
    [[nodiscard]] const NodeType& Type() const { return *mType; }

    /// Inputs and outputs are numbered from 1; a number that the model doesn't have is ignored.
    void SetInput(int input, bool on);
    void SetOutput(int output, bool on);
    [[nodiscard]] bool Input(int input) const;
    [[nodiscard]] bool Output(int output) const;

    /// Holds an output at so many halves of a percent, or lets it go again to where SetOutput has put it meanwhile.
    /// False if the model has no such output.
    bool ForceOutput(int output, std::optional<int> halves);

    /// Input word 0 to 3, lowest input in the lowest bits; 0 beyond the last one.
    [[nodiscard]] std::uint16_t InputWord(int word) const;
    /// Output word 0 or 1.
    [[nodiscard]] std::uint16_t OutputWord(int word) const;
    [[nodiscard]] int InputWords() const;
    [[nodiscard]] int OutputWords() const { return (mType->outputs + 15) / 16; }

    /// From now on ChangedWords reports; the first time all words.
    void StartPushing();
    void StopPushing() { mPushed.reset(); }
    /// The 921 and 922 frames of words that changed since they were last reported.
    [[nodiscard]] std::vector<Frame> ChangedWords();

    void CountCollision() { ++mCollisions; }
    [[nodiscard]] std::uint16_t Collisions() const { return mCollisions; }

    /// A silent node hears nothing and answers nothing.
    void SetSilent(bool silent) { mSilent = silent; }
    [[nodiscard]] bool Silent() const { return mSilent; }

    [[nodiscard]] NodeFaults& Faults() { return mFaults; }
    [[nodiscard]] const NodeFaults& Faults() const { return mFaults; }

    /// The node starts anew: everything off and nothing forced, counters at 0.
    void Restart();

private:
    [[nodiscard]] std::vector<Frame> AllWords() const;
    [[nodiscard]] std::uint8_t OnValue(int input) const;

    NodeSetup mSetup;
    const NodeType* mType;
    std::vector<std::uint8_t> mInputs;        // value of input i + 1
    std::vector<std::uint8_t> mOutputs;       // 0 or 1
    std::vector<std::optional<int>> mForced;  // halves of a percent, of output i + 1
    std::optional<std::vector<Frame>> mPushed;
    std::uint16_t mCollisions = 0;
    bool mSilent = false;
    NodeFaults mFaults;
};

}  // namespace fenrik
