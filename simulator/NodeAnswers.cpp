#include "simulator/NodeAnswers.h"

#include "simulator/QueryReplies.h"

#include <utility>

namespace fenrik {

namespace {

constexpr std::uint16_t kAcknowledge = 903;
constexpr std::uint16_t kValue = 950;
constexpr Frame kRefusal{kAcknowledge, false, false, 0};

std::vector<Frame> ArrayFrames(const QueryReply& reply)
{
    const auto& bytes = reply.bytes;
    std::vector<Frame> frames{{kAcknowledge, true, reply.bigEndian, std::uint16_t(bytes.size())}};
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const int high = i + 1 < bytes.size() ? bytes[i + 1] : 0;
        frames.push_back({kValue, true, false, std::uint16_t(high << 8 | bytes[i])});
    }
    return frames;
}

}  // namespace

NodeAnswers::NodeAnswers(NodeConfig config) : mConfig(std::move(config)), mMemory(mConfig)
{
    if (mConfig.variableFlash)
        mFlash.emplace(mConfig);
}

std::vector<Frame> NodeAnswers::AnswerMemoryRead(const Frame& question) const
{
    if (!question.state)
        return {};
    return {{kValue, false, false, mMemory.At(question.data)}};
}

std::vector<Frame> NodeAnswers::AnswerVersion(const Frame& question) const
{
    const auto& versions = mConfig.versions;
    if (question.state) {
        const std::uint16_t chips[] = {versions.pic, versions.fpga};
        const auto version = question.data < std::size(chips) ? chips[question.data] : std::uint16_t(0);
        return {{kValue, version != 0, false, version}};
    }
    // A node too old for queries doesn't know of beta versions either: it hears the other question.
    if (question.extended && (mConfig.answersQueries || mFlash))
        return {{kValue, false, true, versions.beta}};
    return {{kValue, false, false, versions.os}};
}

std::vector<Frame> NodeAnswers::AnswerQuery(const Frame& question, const NodeFaults& faults)
{
    if (mFlash && !question.state && !question.extended)
        return {{kValue, false, false, mFlash->WordAt(question.data)}};
    if (!mConfig.answersQueries)
        return {};
    mAnsweredInFull = false;
    if (question.extended) {
        mPage = std::uint8_t(question.data);
        return {{kAcknowledge, true, false, 0}};
    }
    return AnswerArray(question.data, faults);
}

std::vector<Frame> NodeAnswers::AnswerArray(std::uint16_t data, const NodeFaults& faults)
{
    const auto* kind = FindQueryKind(data);
    if (kind && faults.refused.contains(kind->code))
        return {kRefusal};
    auto reply = MakeQueryReply(mConfig, data, mPage);
    if (!reply)
        return {kRefusal};
    if (faults.odd && !reply->bytes.empty() && reply->bytes.size() % 2 == 0)
        reply->bytes.pop_back();
    auto frames = ArrayFrames(*reply);
    const auto kept = faults.cutAfter ? std::size_t(*faults.cutAfter) + 1 : frames.size();
    mAnsweredInFull = kept >= frames.size();
    if (!mAnsweredInFull)
        frames.resize(kept);
    return frames;
}

void NodeAnswers::QueryArrived()
{
    if (std::exchange(mAnsweredInFull, false))
        mPage = 0;
}

void NodeAnswers::Restart()
{
    mPage = 0;
    mAnsweredInFull = false;
}

}  // namespace fenrik
