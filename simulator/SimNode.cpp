#include "simulator/SimNode.h"

#include <algorithm>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr std::uint16_t kInputWord = 921;
constexpr std::uint16_t kOutputWord = 922;
constexpr int kWordBits = 16;

}  // namespace

SimNode::SimNode(NodeSetup setup) : mSetup(std::move(setup)), mType(FindNodeType(mSetup.type))
{
    if (!mType)
        throw std::invalid_argument("no node of type " + std::to_string(mSetup.type));
    mInputs.resize(std::size_t(mType->inputs));
    mOutputs.resize(std::size_t(mType->outputs));
    mForced.resize(mOutputs.size());
    if (mSetup.anonymousPing)
        mFaults.answersAs = NodeSetup::kAnonymous;
}

void SimNode::SetInput(int input, bool on)
{
    if (input >= 1 && input <= mType->inputs)
        mInputs[std::size_t(input - 1)] = on ? OnValue(input) : 0;
}

void SimNode::SetOutput(int output, bool on)
{
    if (output >= 1 && output <= mType->outputs)
        mOutputs[std::size_t(output - 1)] = on ? 1 : 0;
}

bool SimNode::Input(int input) const
{
    return input >= 1 && input <= mType->inputs && mInputs[std::size_t(input - 1)] != 0;
}

bool SimNode::Output(int output) const
{
    if (output < 1 || output > mType->outputs)
        return false;
    const auto index = std::size_t(output - 1);
    return mForced[index].value_or(mOutputs[index]) != 0;
}

bool SimNode::ForceOutput(int output, std::optional<int> halves)
{
    if (output < 1 || output > mType->outputs)
        return false;
    mForced[std::size_t(output - 1)] = halves;
    return true;
}

// Inputs of two bits tell a switch to ground (1) from one to battery (2); the harness alternates between them.
std::uint8_t SimNode::OnValue(int input) const
{
    return mType->bitsPerInput == 2 && input % 2 == 0 ? 2 : 1;
}

int SimNode::InputWords() const
{
    return (mType->inputs * mType->bitsPerInput + kWordBits - 1) / kWordBits;
}

std::uint16_t SimNode::InputWord(int word) const
{
    if (word >= InputWords())
        return 0;
    const int perWord = kWordBits / mType->bitsPerInput;
    const int first = word * perWord;
    const int last = std::min(first + perWord, mType->inputs);
    unsigned bits = 0;
    for (int i = first; i < last; ++i)
        bits |= unsigned(mInputs[std::size_t(i)]) << (i - first) * mType->bitsPerInput;
    return std::uint16_t(bits);
}

std::uint16_t SimNode::OutputWord(int word) const
{
    const int first = word * kWordBits;
    const int last = std::min(first + kWordBits, mType->outputs);
    unsigned bits = 0;
    for (int i = first; i < last; ++i)
        bits |= unsigned(Output(i + 1)) << (i - first);
    return std::uint16_t(bits);
}

std::vector<Frame> SimNode::AllWords() const
{
    std::vector<Frame> words;
    for (int word = 0; word < InputWords(); ++word)
        words.push_back({kInputWord, (word & 1) != 0, (word & 2) != 0, InputWord(word)});
    for (int word = 0; word < OutputWords(); ++word)
        words.push_back({kOutputWord, word != 0, false, OutputWord(word)});
    return words;
}

void SimNode::StartPushing()
{
    mPushed.emplace();
}

std::vector<Frame> SimNode::ChangedWords()
{
    if (!mPushed)
        return {};
    auto now = AllWords();
    std::vector<Frame> changed;
    for (std::size_t i = 0; i < now.size(); ++i)
        if (mPushed->empty() || mPushed->at(i).data != now[i].data)
            changed.push_back(now[i]);
    *mPushed = std::move(now);
    return changed;
}

void SimNode::Restart()
{
    std::ranges::fill(mInputs, std::uint8_t(0));
    std::ranges::fill(mOutputs, std::uint8_t(0));
    std::ranges::fill(mForced, std::nullopt);
    mCollisions = 0;
    StopPushing();
}

}  // namespace fenrik
